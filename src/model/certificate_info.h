#pragma once

#include <QDateTime>
#include <QString>

namespace quenvolta
{

/// What a certificate says. Everything is empty when there is no certificate.
struct CertificateInfo {
    /// The common names of the subject and of the issuer.
    QString issuedTo = {};
    QString issuedBy = {};
    /// In the local time zone; invalid when there is no certificate.
    QDateTime validFrom = {};
    QDateTime validTo = {};
    QString organization = {};
    QString organizationUnit = {};
    QString countryCode = {};
    QString state = {};
    QString city = {};
    /// The certificate itself; empty from servers before 2.2.
    QString base64Certificate = {};

    bool operator==(const CertificateInfo&) const = default;
};

} // namespace quenvolta
