#pragma once

#include "provider/provider_texts.h"

/// The words of the computer's standard namespace.
namespace quenvolta::standardtexts
{

using replies::Text;

inline constexpr Text kCannotReadNetwork{u"Cannot read the network interfaces of the server: %1."};
inline constexpr Text kCannotReadAccounts{u"Cannot read the accounts of the server's system: %1."};

inline constexpr Text kBadSearchText{u"A search needs a text of 1 to %1 characters."};
inline constexpr Text kBadSearchLimit{u"A search finds 1 to %1 objects, not %2."};
inline constexpr Text kBadSearchKind{u"'%1' is not a kind of object that can be searched for."};
inline constexpr Text kTooManyIdentifiers{u"At most %1 security identifiers can be looked up at once."};

} // namespace quenvolta::standardtexts
