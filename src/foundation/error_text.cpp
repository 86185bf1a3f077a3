#include "foundation/error_text.h"

#include "foundation/format.h"

#include <QStringView>

#include <algorithm>
#include <array>
#include <cstdint>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct Message {
    std::uint32_t code;
    QStringView text;
};

#define MESSAGE(code, text) Message{code, u"" text},
constexpr auto kMessages = std::to_array<Message>({
#include "resources/messages.def"
});
#undef MESSAGE

constexpr bool CodesRise()
{
    return std::adjacent_find(kMessages.begin(), kMessages.end(), [](const Message& left, const Message& right) {
               return left.code >= right.code;
           }) == kMessages.end();
}
static_assert(CodesRise(), "the message table must be sorted by code, each code once");

QStringView FindMessage(std::uint32_t code)
{
    const auto found =
        std::lower_bound(kMessages.begin(), kMessages.end(), code,
                         [](const Message& message, std::uint32_t wanted) { return message.code < wanted; });
    return found != kMessages.end() && found->code == code ? found->text : QStringView{};
}

} // namespace

QString ErrorTextFromHResult(HRESULT code)
{
    if (code == WBEM_E_ACCESS_DENIED)
        return u"WMI access denied."_s;
    if (code == RPC_E_ACCESS_DENIED)
        return u"RPC access denied."_s;
    const auto bits = static_cast<std::uint32_t>(code);
    const QStringView message = FindMessage(bits);
    if (message.isEmpty())
        return Format(u"HRESULT 0x%8.8X", bits);
    return Format(u"%s (0x%8.8X)", message.toString(), bits);
}

} // namespace quenvolta
