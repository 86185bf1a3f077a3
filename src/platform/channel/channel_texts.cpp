#include "platform/channel/channel_texts.h"

#include <QStringView>

#include <array>

namespace quenvolta
{

QString ChannelTextOf(ChannelText text)
{
    static constexpr std::array kTexts{
#define CHANNEL_TEXT(name, words) QStringView(u"" words),
#include "resources/channel_texts.def"
#undef CHANNEL_TEXT
    };
    return kTexts.at(static_cast<std::size_t>(text)).toString();
}

} // namespace quenvolta
