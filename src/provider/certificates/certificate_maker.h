#pragma once

#include "provider/certificates/certificate_subject.h"
#include "provider/certificates/openssl_handles.h"

#include <QByteArray>

namespace quenvolta
{

/// Makes what a private key signs. A subject or number of days that can't stand in a certificate is a ProviderError
/// (WBEM_E_INVALID_PARAMETER); the subject is checked at the construction, before any key is made.
class CertificateMaker
{
public:
    explicit CertificateMaker(const CertificateSubject& subject);

    /// Throws for a number of days outside 1 to 36500.
    static void CheckDays(int days);

    /// A certificate for a web server that the key signs itself, valid from now on.
    CertificatePtr SelfSigned(EVP_PKEY& key, int days) const;

    /// The request for a certification authority (PKCS #10), as PEM text.
    QByteArray Request(EVP_PKEY& key) const;

private:
    NamePtr m_name;
    GeneralNamesPtr m_alternativeNames;
};

} // namespace quenvolta
