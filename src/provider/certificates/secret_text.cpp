#include "provider/certificates/secret_text.h"

#include "provider/certificates/certificate_texts.h"
#include "provider/certificates/openssl_failure.h"

namespace quenvolta
{

SecretText::SecretText()
    // The library overwrites a channel of this kind when it grows and when it is freed.
    : m_memory(BIO_new(BIO_s_secmem()))
{
    RequireOpenSsl(m_memory != nullptr, certificatetexts::kCannotWriteText.Whole());
}

QByteArrayView SecretText::View() const
{
    char* begin = nullptr;
    const long size = BIO_get_mem_data(m_memory.get(), &begin);
    return {begin, size};
}

void SecretText::Append(QByteArrayView text)
{
    const int size = static_cast<int>(text.size());
    RequireOpenSsl(size == 0 || BIO_write(m_memory.get(), text.data(), size) == size,
                   certificatetexts::kCannotWriteText.Whole());
}

} // namespace quenvolta
