#pragma once

#include "provider/certificates/openssl_handles.h"
#include "provider/certificates/secret_text.h"

#include <QByteArray>

namespace quenvolta
{

/// A new key for the server: RSA, which every client knows, of 3072 bits, enough for the ten years of a certificate.
/// ProviderError when the library fails.
PrivateKeyPtr MakePrivateKey();

/// True when the key is the certificate's: what it signs, the certificate verifies. A key of which only the public half
/// is right doesn't fit.
bool KeyFits(EVP_PKEY& key, const X509& certificate);

/// A short name of the public key, the same for a key and for all that is made with it: hexadecimal digits. Empty when
/// there is none.
QByteArray PublicKeyDigest(const EVP_PKEY* key);

/// Appends the key as PEM text (PKCS#8, without a password).
void AppendPem(SecretText& text, const EVP_PKEY& key);

} // namespace quenvolta
