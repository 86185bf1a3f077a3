#include "provider/certificates/openssl_failure.h"

#include "provider/provider_error.h"

#include <QStringList>

#include <array>
#include <openssl/err.h>

namespace quenvolta
{

QString TakeOpenSslErrors()
{
    constexpr std::size_t kLongestError = 256;
    QStringList lines;
    while (const unsigned long code = ERR_get_error()) {
        std::array<char, kLongestError> text{};
        ERR_error_string_n(code, text.data(), text.size());
        lines.append(QString::fromUtf8(text.data()));
    }
    return lines.join(u'\n');
}

void ThrowOpenSslFailure(const QString& description)
{
    throw ProviderError(WBEM_E_FAILED, description, {}, TakeOpenSslErrors());
}

} // namespace quenvolta
