#pragma once

#include "provider/provider_texts.h"

/// The words of the role lists.
namespace quenvolta::roletexts
{

using replies::Text;

inline constexpr Text kListMissing{u"The list of accounts '%1' is missing."};
inline constexpr Text kNotAnAccount{u"A list of accounts holds an object that is no Windows account."};
inline constexpr Text kInvalidSid{u"'%1' is not the security identifier of an account."};
inline constexpr Text kTooManyAccounts{u"A list can hold at most %1 accounts. Name a group instead of its members."};

} // namespace quenvolta::roletexts
