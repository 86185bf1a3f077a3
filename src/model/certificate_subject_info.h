#pragma once

#include <QString>
#include <QStringList>

namespace quenvolta
{

/// Whom a new certificate is for.
struct CertificateSubjectInfo {
    QString commonName = {};
    /// Further names of the server; servers before 2.8 don't take them.
    QStringList additionalNames = {};
    QString organization = {};
    QString organizationUnit = {};
    /// Two letters, or empty.
    QString countryCode = {};
    QString state = {};
    QString city = {};

    bool operator==(const CertificateSubjectInfo&) const = default;
};

} // namespace quenvolta
