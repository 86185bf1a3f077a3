#pragma once

#include "provider/provider_texts.h"

/// The words of the computer's standard namespace.
namespace quenvolta::standardtexts
{

using replies::Text;

inline constexpr Text kCannotReadNetwork{u"Cannot read the network interfaces of the server: %1."};
inline constexpr Text kCannotReadAccounts{u"Cannot read the accounts of the server's system: %1."};

} // namespace quenvolta::standardtexts
