#pragma once

#include "provider/certificates/openssl_handles.h"

#include <QString>
#include <QStringList>

namespace quenvolta
{

/// Whom a certificate of this server is for. Empty fields other than the common name are left out of it.
struct CertificateSubject {
    QString commonName;
    QStringList additionalNames;
    QString organization;
    QString organizationUnit;
    QString countryCode;
    QString state;
    QString city;
};

/// The subject's name. ProviderError (WBEM_E_INVALID_PARAMETER) for a field that is too long or can't stand in a
/// certificate.
NamePtr MakeName(const CertificateSubject& subject);

/// The host names and addresses that the certificate is good for: the common name, when it is one, and the additional
/// names, each once. Null when there is none. ProviderError (WBEM_E_INVALID_PARAMETER) for an additional name that is
/// neither a host name (a wildcard is allowed as its first part) nor an IP address.
GeneralNamesPtr MakeAlternativeNames(const CertificateSubject& subject);

} // namespace quenvolta
