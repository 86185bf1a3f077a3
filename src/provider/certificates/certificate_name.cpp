#include "provider/certificates/certificate_name.h"

#include "provider/certificates/certificate_texts.h"
#include "provider/certificates/openssl_failure.h"

#include <memory>

namespace quenvolta
{

QString NameAttribute(const X509_NAME* name, int kind)
{
    const int place = X509_NAME_get_index_by_NID(name, kind, -1);
    if (place < 0)
        return {};
    unsigned char* bytes = nullptr;
    const int size = ASN1_STRING_to_UTF8(&bytes, X509_NAME_ENTRY_get_data(X509_NAME_get_entry(name, place)));
    const std::unique_ptr<unsigned char, decltype([](unsigned char* each) { OPENSSL_free(each); })> owner(bytes);
    return size < 0 ? QString() : QString::fromUtf8(static_cast<const char*>(static_cast<const void*>(bytes)), size);
}

QString CommonNameOrWhole(const X509_NAME* name)
{
    if (QString common = NameAttribute(name, NID_commonName); !common.isEmpty())
        return common;
    // As RFC 2253 writes it, but with letters of every script as they are.
    constexpr unsigned long kForm = XN_FLAG_RFC2253 & ~static_cast<unsigned long>(ASN1_STRFLGS_ESC_MSB);
    const BioPtr memory(BIO_new(BIO_s_mem()));
    RequireOpenSsl(memory && X509_NAME_print_ex(memory.get(), name, 0, kForm) >= 0,
                   certificatetexts::kCannotWriteText.Whole());
    char* begin = nullptr;
    const long size = BIO_get_mem_data(memory.get(), &begin);
    return QString::fromUtf8(begin, size);
}

} // namespace quenvolta
