#include "provider/certificates/certificate_maker.h"

#include "provider/certificates/certificate_texts.h"
#include "provider/certificates/openssl_failure.h"
#include "provider/provider_error.h"

#include <openssl/pem.h>

namespace quenvolta
{

namespace
{

constexpr int kMostDays = 36500;
constexpr int kSerialBits = 128;

void Require(bool succeeded)
{
    RequireOpenSsl(succeeded, certificatetexts::kCannotMakeCertificate.Whole());
}

void SetSerial(X509& certificate)
{
    // The highest bit is set, so that every serial number has the same length.
    const std::unique_ptr<BIGNUM, OpenSslFree<BN_free>> number(BN_new());
    Require(number && BN_rand(number.get(), kSerialBits, BN_RAND_TOP_ONE, BN_RAND_BOTTOM_ANY) == 1 &&
            BN_to_ASN1_INTEGER(number.get(), X509_get_serialNumber(&certificate)) != nullptr);
}

// `value` is one of the library's own words for the extension, never a text from outside.
void AddExtension(X509& certificate, int kind, const char* value)
{
    X509V3_CTX context{};
    X509V3_set_ctx(&context, &certificate, &certificate, nullptr, nullptr, 0);
    const ExtensionPtr extension(X509V3_EXT_conf_nid(nullptr, &context, kind, value));
    Require(extension && X509_add_ext(&certificate, extension.get(), -1) == 1);
}

} // namespace

CertificateMaker::CertificateMaker(const CertificateSubject& subject)
    : m_name(MakeName(subject))
    , m_alternativeNames(MakeAlternativeNames(subject))
{
}

void CertificateMaker::CheckDays(int days)
{
    if (days < 1 || days > kMostDays)
        throw ProviderError(WBEM_E_INVALID_PARAMETER,
                            certificatetexts::kDaysInvalid.arg(QString::number(days), QString::number(kMostDays)));
}

CertificatePtr CertificateMaker::SelfSigned(EVP_PKEY& key, int days) const
{
    CheckDays(days);
    CertificatePtr certificate(X509_new());
    Require(certificate && X509_set_version(certificate.get(), X509_VERSION_3) == 1 &&
            X509_set_subject_name(certificate.get(), m_name.get()) == 1 &&
            X509_set_issuer_name(certificate.get(), m_name.get()) == 1 &&
            X509_set_pubkey(certificate.get(), &key) == 1 &&
            X509_time_adj_ex(X509_getm_notBefore(certificate.get()), 0, 0, nullptr) &&
            X509_time_adj_ex(X509_getm_notAfter(certificate.get()), days, 0, nullptr));
    SetSerial(*certificate);
    AddExtension(*certificate, NID_basic_constraints, "critical,CA:FALSE");
    AddExtension(*certificate, NID_key_usage, "critical,digitalSignature,keyEncipherment");
    AddExtension(*certificate, NID_ext_key_usage, "serverAuth");
    AddExtension(*certificate, NID_subject_key_identifier, "hash");
    AddExtension(*certificate, NID_authority_key_identifier, "keyid:always");
    Require(!m_alternativeNames || X509_add1_ext_i2d(certificate.get(), NID_subject_alt_name, m_alternativeNames.get(),
                                                     0, X509V3_ADD_DEFAULT) == 1);
    Require(X509_sign(certificate.get(), &key, EVP_sha256()) > 0);
    return certificate;
}

QByteArray CertificateMaker::Request(EVP_PKEY& key) const
{
    const auto require = [](bool succeeded) {
        RequireOpenSsl(succeeded, certificatetexts::kCannotMakeRequest.Whole());
    };
    const CertificateRequestPtr request(X509_REQ_new());
    require(request && X509_REQ_set_version(request.get(), X509_REQ_VERSION_1) == 1 &&
            X509_REQ_set_subject_name(request.get(), m_name.get()) == 1 &&
            X509_REQ_set_pubkey(request.get(), &key) == 1);
    if (m_alternativeNames) {
        const ExtensionPtr names(X509V3_EXT_i2d(NID_subject_alt_name, 0, m_alternativeNames.get()));
        using Extensions = std::unique_ptr<STACK_OF(X509_EXTENSION), decltype([](STACK_OF(X509_EXTENSION) * each) {
                                               sk_X509_EXTENSION_free(each); // not what is in it
                                           })>;
        const Extensions extensions(sk_X509_EXTENSION_new_null());
        require(names && extensions && sk_X509_EXTENSION_push(extensions.get(), names.get()) > 0 &&
                X509_REQ_add_extensions(request.get(), extensions.get()) == 1);
    }
    const BioPtr text(BIO_new(BIO_s_mem()));
    require(X509_REQ_sign(request.get(), &key, EVP_sha256()) > 0 && text &&
            PEM_write_bio_X509_REQ(text.get(), request.get()) == 1);
    char* begin = nullptr;
    const long size = BIO_get_mem_data(text.get(), &begin);
    return QByteArray(begin, size);
}

} // namespace quenvolta
