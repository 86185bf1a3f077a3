#include "provider/certificates/certificate_bundle.h"

#include "provider/certificates/certificate_name.h"
#include "provider/certificates/certificate_texts.h"
#include "provider/certificates/openssl_failure.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kLongestText = 1024 * 1024;
constexpr int kMostBlocks = 32;
constexpr int kLargestRsaBits = 8192;
// What an RSA key of 2048 bits, or a signature with SHA-224, is worth; TLS libraries refuse less.
constexpr int kLeastSecurityBits = 112;

constexpr QByteArrayView kBegin = "-----BEGIN ";
constexpr QByteArrayView kEnd = "-----END ";
constexpr QByteArrayView kDashes = "-----";

[[noreturn]] void Refuse(const QString& description)
{
    throw ProviderError(WBEM_E_INVALID_PARAMETER, description, {}, TakeOpenSslErrors());
}

// One block of a PEM text from its first dash to the end of its last line, as far as it is there.
struct PemBlock {
    QByteArrayView label;
    QByteArrayView text;
};

// Takes the next block from the front of `rest`; false when there is none.
bool TakeBlock(QByteArrayView& rest, PemBlock& block)
{
    const qsizetype begin = rest.indexOf(kBegin);
    if (begin < 0)
        return false;
    rest = rest.sliced(begin);
    const qsizetype labelEnd = rest.indexOf(kDashes, kBegin.size());
    block.label = rest.first(labelEnd < 0 ? rest.size() : labelEnd).sliced(kBegin.size());
    const qsizetype next = rest.indexOf(kBegin, kBegin.size());
    const qsizetype end = rest.indexOf(kEnd);
    qsizetype size = rest.size();
    if (next >= 0 && (end < 0 || next < end))
        size = next; // cut off: what follows begins a block of its own
    else if (const qsizetype line = end < 0 ? end : rest.indexOf('\n', end); line >= 0)
        size = line + 1;
    block.text = rest.first(size);
    rest = rest.sliced(size);
    return true;
}

BioPtr Open(QByteArrayView text)
{
    BioPtr memory(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())));
    RequireOpenSsl(memory != nullptr, certificatetexts::kCannotWriteText.Whole());
    return memory;
}

// Without this the library would ask at the terminal.
int RefusePassword(char*, int, int, void*)
{
    return -1;
}

void AddCertificate(CertificateBundle& bundle, CertificatePtr certificate)
{
    if (!certificate)
        Refuse(certificatetexts::kCertificateDamaged.Whole());
    if (!bundle.certificate)
        bundle.certificate = std::move(certificate);
    else if (X509_cmp(bundle.certificate.get(), certificate.get()) != 0)
        bundle.chain.push_back(std::move(certificate));
}

void AddBlock(CertificateBundle& bundle, const PemBlock& block)
{
    if (block.label.endsWith("PRIVATE KEY")) {
        if (bundle.key || bundle.keyUnreadable)
            return;
        bundle.key.reset(PEM_read_bio_PrivateKey(Open(block.text).get(), nullptr, &RefusePassword, nullptr));
        bundle.keyUnreadable = !bundle.key;
        ERR_clear_error();
    } else if (block.label.endsWith("CERTIFICATE")) {
        AddCertificate(bundle,
                       CertificatePtr(PEM_read_bio_X509(Open(block.text).get(), nullptr, &RefusePassword, nullptr)));
    } // anything else, such as parameters of a curve, says nothing that isn't in the key
}

CertificatePtr ReadDer(QByteArrayView base64)
{
    QByteArray text = base64.toByteArray();
    text.removeIf([](char each) { return each == ' ' || each == '\t' || each == '\r' || each == '\n'; });
    const QByteArray::FromBase64Result bytes =
        QByteArray::fromBase64Encoding(std::move(text), QByteArray::AbortOnBase64DecodingErrors);
    if (!bytes || bytes.decoded.isEmpty())
        return nullptr;
    const QByteArray& der = bytes.decoded;
    const auto* begin = static_cast<const unsigned char*>(static_cast<const void*>(der.constData()));
    const unsigned char* end = begin;
    CertificatePtr certificate(d2i_X509(nullptr, &end, static_cast<long>(der.size())));
    if (end - begin != der.size())
        certificate.reset();
    ERR_clear_error();
    return certificate;
}

bool HasUsableKey(const X509& certificate)
{
    static constexpr std::array kKinds{"RSA", "RSA-PSS", "EC", "ED25519", "ED448"};
    const EVP_PKEY* key = X509_get0_pubkey(&certificate);
    return key && EVP_PKEY_get_security_bits(key) >= kLeastSecurityBits && EVP_PKEY_get_bits(key) <= kLargestRsaBits &&
           std::any_of(kKinds.begin(), kKinds.end(), [key](const char* kind) { return EVP_PKEY_is_a(key, kind) == 1; });
}

bool HasUsableSignature(X509& certificate)
{
    // Nobody relies on the signature that a certificate gives itself.
    int securityBits = -1;
    return (X509_get_extension_flags(&certificate) & EXFLAG_SS) != 0 ||
           X509_get_signature_info(&certificate, nullptr, nullptr, &securityBits, nullptr) != 1 ||
           securityBits >= kLeastSecurityBits;
}

bool IsDate(const ASN1_TIME* time)
{
    std::tm fields{};
    return time && ASN1_TIME_to_tm(time, &fields) == 1;
}

} // namespace

CertificateBundle ReadBundle(QByteArrayView text)
{
    if (text.size() > kLongestText)
        Refuse(certificatetexts::kTextTooLong.arg(QString::number(kLongestText)));
    ERR_clear_error();
    CertificateBundle bundle;
    PemBlock block;
    int blocks = 0;
    for (QByteArrayView rest = text; TakeBlock(rest, block); ++blocks) {
        if (blocks == kMostBlocks)
            Refuse(certificatetexts::kTooManyBlocks.arg(QString::number(kMostBlocks)));
        AddBlock(bundle, block);
    }
    if (blocks == 0)
        bundle.certificate = ReadDer(text);
    return bundle;
}

void RequireUsable(const CertificateBundle& bundle)
{
    if (!bundle.certificate)
        Refuse(certificatetexts::kNoCertificate.Whole());
    X509& certificate = *bundle.certificate;
    const QString name = RepositoryNames::Show(CommonNameOrWhole(X509_get_subject_name(&certificate)));
    if (!HasUsableKey(certificate))
        Refuse(certificatetexts::kKeyKindUnsupported.arg(name));
    if (!HasUsableSignature(certificate))
        Refuse(certificatetexts::kSignatureTooWeak.arg(name));
    if (!IsDate(X509_get0_notBefore(&certificate)) || !IsDate(X509_get0_notAfter(&certificate)))
        Refuse(certificatetexts::kDatesInvalid.arg(name));
}

QByteArray ToPem(X509& certificate)
{
    const BioPtr memory(BIO_new(BIO_s_mem()));
    RequireOpenSsl(memory && PEM_write_bio_X509(memory.get(), &certificate) == 1,
                   certificatetexts::kCannotWriteText.Whole());
    char* begin = nullptr;
    const long size = BIO_get_mem_data(memory.get(), &begin);
    return QByteArray(begin, size);
}

} // namespace quenvolta
