#pragma once

#include <QString>

namespace quenvolta
{

/// The channel's own sentences (resources/channel_texts.def).
enum class ChannelText {
#define CHANNEL_TEXT(name, text) name,
#include "resources/channel_texts.def"
#undef CHANNEL_TEXT
};

/// The sentence; `%1` and `%2` in it stand for inserts.
QString ChannelTextOf(ChannelText text);

} // namespace quenvolta
