#pragma once

#include "provider/provider_texts.h"

/// The words about activities and imports.
namespace quenvolta::replies
{

inline constexpr Text kCannotStartJob{u"Cannot start a process for the operation '%1': %2."};
inline constexpr Text kJobCancelled{u"The operation was cancelled. The server was not changed."};
inline constexpr Text kJobCrashed{
    u"The process that carried out '%1' ended unexpectedly. What it had done was removed; try again."};
inline constexpr Text kJobKilledBy{u"It was ended by the signal %1."};
inline constexpr Text kJobExitedWith{u"It exited with the status %1 and without an answer."};
inline constexpr Text kActivityIdInUse{u"An operation with the identifier '%1' is running already."};
inline constexpr Text kActivityIdInvalid{u"The identifier of an operation must be a text of 1 to %1 characters."};
inline constexpr Text kActivityMissing{u"No operation with the identifier '%1' is running. It may have ended already."};
inline constexpr Text kTooManyActivities{u"The server carries out %1 long operations already. Wait for one to end."};

inline constexpr Text kImportPathRelative{
    u"'%1' is not an absolute path on the server. Enter one that begins with a slash; mount a network folder first."};
inline constexpr Text kImportPathInvalid{u"'%1' cannot be the path of a file or folder on the server."};
inline constexpr Text kImportSourceMissing{u"'%1' does not exist on the server."};
inline constexpr Text kCannotReachSource{u"Cannot open '%1' on the server."};
inline constexpr Text kSourceNotARepository{u"'%1' is not a Subversion repository."};
inline constexpr Text kSourceOtherType{
    u"The repository '%1' has the storage type '%2', which cannot be copied. Dump it "
    u"with 'svnadmin dump' and import the dump file."};
inline constexpr Text kSourceHoldsServer{
    u"The repositories of this server stand inside '%1', so it cannot be copied to them."};
inline constexpr Text kSourceUnfinished{u"'%1' is a repository that is just being created or deleted."};
inline constexpr Text kSourceNotAFile{u"'%1' is not a file. Enter the path of a dump file."};
inline constexpr Text kUnknownImportMode{u"The server knows no import mode %1."};
inline constexpr Text kCannotCopy{u"Cannot copy the repository '%1'."};
inline constexpr Text kCannotLoad{u"Cannot load the dump file '%1'."};

} // namespace quenvolta::replies
