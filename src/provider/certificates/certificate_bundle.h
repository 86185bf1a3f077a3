#pragma once

#include "provider/certificates/openssl_handles.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <vector>

namespace quenvolta
{

/// What a text brings: certificates, and perhaps a private key.
struct CertificateBundle {
    /// The first certificate, the server's own; null when there is none.
    CertificatePtr certificate;
    /// The certificates after it, in their order: those of the authorities above.
    std::vector<CertificatePtr> chain;
    /// The first key; null when there is none or it can't be read.
    PrivateKeyPtr key;
    /// There is a key, but it is damaged or needs a password.
    bool keyUnreadable = false;
};

/// Reads PEM text, its blocks in any order and with anything between them, or the Base64 of one DER certificate. The
/// key is never asked a password for. ProviderError (WBEM_E_INVALID_PARAMETER) for more than 1 MiB, more than 32
/// blocks, or a damaged certificate.
CertificateBundle ReadBundle(QByteArrayView text);

/// Throws the ProviderError (WBEM_E_INVALID_PARAMETER) that says why the web service could not use the bundle's
/// certificate: there is none, its key or its signature is too weak or of an unknown kind, or its dates can't be read.
void RequireUsable(const CertificateBundle& bundle);

/// The certificate alone as PEM text.
QByteArray ToPem(X509& certificate);

} // namespace quenvolta
