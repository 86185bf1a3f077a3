#pragma once

#include "provider/provider_texts.h"

/// The words about hook scripts. %1 is the hook, %2 the repository.
namespace quenvolta::replies
{

inline constexpr Text kUnknownHook{u"There is no hook of the kind %1."};
inline constexpr Text kCannotReadHook{u"Cannot read the %1 hook of the repository '%2'."};
inline constexpr Text kCannotWriteHook{u"Cannot write the %1 hook of the repository '%2'."};
inline constexpr Text kCannotDeleteHook{u"Cannot delete the %1 hook of the repository '%2'."};
inline constexpr Text kHookTooLong{u"The %1 hook of the repository '%2' is longer than %3 bytes."};
inline constexpr Text kHookNoText{
    u"The %1 hook of the repository '%2' is a program and not a script, so its text cannot "
    u"be shown or changed here."};
inline constexpr Text kHookTextInvalid{u"The text for the %1 hook of the repository '%2' holds a character that no "
                                       u"script can have."};
inline constexpr Text kHookIsFolder{
    u"There is a folder in the place of the %1 hook of the repository '%2'. Remove it."};
inline constexpr Text kHooksFolderIsLink{u"The folder of the hooks of the repository '%2' is a link to another folder. "
                                         u"Change the %1 hook there, or replace the link with a folder."};

} // namespace quenvolta::replies
