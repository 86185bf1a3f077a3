#pragma once

#include "provider/provider_texts.h"

/// The words about users, groups and permissions. Names are already shortened and escaped.
namespace quenvolta::accounttexts
{

using replies::Text;

inline constexpr Text kUserExists{u"A user named '%1' already exists. Choose another name."};
inline constexpr Text kUserMissing{u"The user '%1' does not exist. Refresh the list."};
inline constexpr Text kGroupExists{u"A group named '%1' already exists. Choose another name."};
inline constexpr Text kGroupMissing{u"The group '%1' does not exist. Refresh the list."};
inline constexpr Text kMemberIsUnknown{
    u"'%2' cannot be a member of the group '%1': it does not exist. Refresh the list of users and groups."};
inline constexpr Text kMemberIsNoAccount{u"'%2' cannot be a member of the group '%1': it is not the path of a user or "
                                         u"a group. Name users and groups only."};
inline constexpr Text kMemberTwice{u"'%2' is named twice as a member of the group '%1'. Name it once."};
inline constexpr Text kCycle{u"The group '%1' cannot have the member '%2': '%1' would be a member of itself. Remove "
                             u"'%2' from the members, or '%1' from the members of '%2'."};
inline constexpr Text kCycleSummary{u"Group members have cycles."};

inline constexpr Text kInvalidUserName{u"The user name '%1' is not valid: it %2. Choose another name."};
inline constexpr Text kInvalidGroupName{u"The group name '%1' is not valid: it %2. Choose another name."};
inline constexpr Text kIsEmpty{u"is empty"};
inline constexpr Text kIsTooLong{u"is longer than 255 bytes"};
inline constexpr Text kHasSurrogate{u"contains half of a character"};
inline constexpr Text kHasControl{u"contains a control character or a line break"};
inline constexpr Text kHasOuterBlank{u"begins or ends with a blank"};
inline constexpr Text kHasReserved{u"contains one of the characters : = , / [ ] *"};
inline constexpr Text kHasReservedStart{u"begins with one of the characters # @ & $ ~"};

inline constexpr Text kInvalidPassword{
    u"The password of the user '%1' cannot be used: it %2. Choose another password."};
inline constexpr Text kPasswordTooLong{u"is longer than 72 bytes"};
inline constexpr Text kPasswordHasNul{u"contains a zero character"};
inline constexpr Text kCannotHash{u"The password of the user '%1' cannot be stored: %2."};

inline constexpr Text kServerPlace{u"the server"};
inline constexpr Text kRepositoryPlace{u"the repository '%1'"};
inline constexpr Text kPathPlace{u"'%2' in the repository '%1'"};
inline constexpr Text kPathUnfit{
    u"Permissions cannot be set on '%2' in the repository '%1': its name contains a closing "
    u"square bracket, which permission rules cannot express. Rename it, or set the "
    u"permissions on a folder above it."};
inline constexpr Text kRepositoryUnfit{u"Permissions cannot be set in the repository '%1': its name contains a colon "
                                       u"or a square bracket, which permission "
                                       u"rules cannot express. Rename the repository."};
inline constexpr Text kUnknownAccount{
    u"The permissions of %1 name an account that does not exist: '%2'. Refresh the list of users and groups."};
inline constexpr Text kForeignAccount{u"The permissions of %1 name '%2', which is not the security identifier of an "
                                      u"account of the server's computer. Choose another account."};
inline constexpr Text kAccountTwice{u"The permissions of %1 name the account '%2' twice. Name it once."};
inline constexpr Text kNoAccount{u"The permissions of %1 hold an entry without an account that the server knows."};
inline constexpr Text kUnknownAccess{u"The permissions of %1 hold an unknown access level for '%2': %3."};
inline constexpr Text kNotSecured{u"'%1' is not the path of an object that has permissions."};
inline constexpr Text kEveryone{u"Everyone"};

inline constexpr Text kCannotReadAccounts{u"Cannot read the server's accounts in '%1'."};
inline constexpr Text kAccountsDamaged{
    u"The server's accounts in '%1' are damaged: %2. Restore the file from a backup."};
inline constexpr Text kAccountsMissing{u"The server's accounts in '%1' are missing, but '%2' holds users. Restore the "
                                       u"file from a backup, or remove '%2' to begin without users."};
inline constexpr Text kAccountsNewer{
    u"The server's accounts in '%1' were written by a newer version. Install that version on the server."};
inline constexpr Text kNotJson{u"it is not valid at byte %1: %2"};
inline constexpr Text kBadRecord{u"the record '%1' is not valid"};
inline constexpr Text kCannotWriteFile{u"Cannot write '%1'. Nothing was changed."};
inline constexpr Text kReadBackDiffers{u"'%1' reads back other than it was written. Nothing was changed. Check the "
                                       u"server's disk."};
inline constexpr Text kCannotReplace{u"Cannot replace '%1'."};
inline constexpr Text kRulesRefused{u"Subversion does not accept the permission rules. Nothing was changed."};

} // namespace quenvolta::accounttexts
