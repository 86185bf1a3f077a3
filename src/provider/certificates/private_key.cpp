#include "provider/certificates/private_key.h"

#include "provider/certificates/certificate_texts.h"
#include "provider/certificates/openssl_failure.h"

#include <array>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/rsa.h>
#include <vector>

namespace quenvolta
{

namespace
{

constexpr int kRsaBits = 3072;
constexpr unsigned char kProof[] = "The key that signs this is the key of the certificate.";

bool SignsFor(EVP_PKEY& key, EVP_PKEY& publicKey)
{
    const DigestContextPtr signing(EVP_MD_CTX_new());
    const DigestContextPtr verifying(EVP_MD_CTX_new());
    std::size_t size = 0;
    if (!signing || !verifying ||
        EVP_DigestSignInit_ex(signing.get(), nullptr, nullptr, nullptr, nullptr, &key, nullptr) != 1 ||
        EVP_DigestSign(signing.get(), nullptr, &size, kProof, sizeof kProof) != 1)
        return false;
    std::vector<unsigned char> signature(size);
    return EVP_DigestSign(signing.get(), signature.data(), &size, kProof, sizeof kProof) == 1 &&
           EVP_DigestVerifyInit_ex(verifying.get(), nullptr, nullptr, nullptr, nullptr, &publicKey, nullptr) == 1 &&
           EVP_DigestVerify(verifying.get(), signature.data(), size, kProof, sizeof kProof) == 1;
}

} // namespace

PrivateKeyPtr MakePrivateKey()
{
    PrivateKeyPtr key(EVP_RSA_gen(kRsaBits));
    RequireOpenSsl(key != nullptr, certificatetexts::kCannotMakeKey.Whole());
    return key;
}

bool KeyFits(EVP_PKEY& key, const X509& certificate)
{
    EVP_PKEY* publicKey = X509_get0_pubkey(&certificate);
    const bool fits = publicKey && EVP_PKEY_eq(publicKey, &key) == 1 && SignsFor(key, *publicKey);
    ERR_clear_error(); // that it doesn't fit is an answer
    return fits;
}

QByteArray PublicKeyDigest(const EVP_PKEY* key)
{
    const int size = key ? i2d_PUBKEY(key, nullptr) : 0;
    if (size <= 0)
        return {};
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    unsigned char* end = bytes.data();
    i2d_PUBKEY(key, &end);
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    std::size_t length = 0;
    RequireOpenSsl(EVP_Q_digest(nullptr, "SHA256", nullptr, bytes.data(), bytes.size(), digest.data(), &length) == 1,
                   certificatetexts::kCannotMakeKey.Whole());
    return QByteArray::fromRawData(static_cast<const char*>(static_cast<const void*>(digest.data())),
                                   static_cast<qsizetype>(length))
        .toHex();
}

void AppendPem(SecretText& text, const EVP_PKEY& key)
{
    RequireOpenSsl(PEM_write_bio_PrivateKey(text.Output(), &key, nullptr, nullptr, 0, nullptr, nullptr) == 1,
                   certificatetexts::kCannotWriteText.Whole());
}

} // namespace quenvolta
