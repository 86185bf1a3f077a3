#pragma once

#include <QStringView>

/// The words that the repository layer answers with. %1 is the object (already shortened and escaped), %2 the rest.
namespace quenvolta::texts
{

inline constexpr QStringView kCannotStartLibrary = u"Cannot start the Subversion library.";
inline constexpr QStringView kCancelled = u"The operation was cancelled.";

inline constexpr QStringView kCannotOpenRoot = u"Cannot open the folder of the repositories '%1'.";
inline constexpr QStringView kRootMissing = u"The folder of the repositories '%1' does not exist. Create it, mount its "
                                            u"disk, or choose another folder in the server's properties.";
inline constexpr QStringView kCannotList = u"Cannot list the repositories in '%1'.";

inline constexpr QStringView kRepositoryMissing = u"The repository '%1' does not exist. Refresh the list.";
inline constexpr QStringView kNotARepository = u"'%1' is not a Subversion repository.";
inline constexpr QStringView kRepositoryExists =
    u"A repository, folder or file named '%1' already exists. Choose another name.";
inline constexpr QStringView kCannotOpen = u"Cannot open the repository '%1'.";
inline constexpr QStringView kCannotRead = u"Cannot read the repository '%1'.";
inline constexpr QStringView kCannotCreate = u"Cannot create the repository '%1'.";
inline constexpr QStringView kCannotRename = u"Cannot rename the repository '%1'.";
inline constexpr QStringView kCannotDelete = u"Cannot delete the repository '%1'.";
inline constexpr QStringView kNotAllRemoved = u"The repository '%1' was deleted, but some of its files remain in '%2'. "
                                              u"Remove that folder by hand.";
inline constexpr QStringView kCannotChange = u"Cannot change the repository '%1'.";
inline constexpr QStringView kCannotUpgrade = u"Cannot upgrade the repository '%1'.";
inline constexpr QStringView kCannotMakeHidden = u"Cannot write to the folder of the repositories '%1'.";

inline constexpr QStringView kEntryMissing = u"'%2' does not exist in the repository '%1'. Refresh the list.";
inline constexpr QStringView kNotAFolder = u"'%2' in the repository '%1' is a file, not a folder.";
inline constexpr QStringView kEntryExists = u"'%2' already exists in the repository '%1'. Choose another name.";
inline constexpr QStringView kParentMissing =
    u"The folder '%2' does not exist in the repository '%1'. Create it first.";
inline constexpr QStringView kNoPaths = u"No folder of the repository '%1' was named.";
inline constexpr QStringView kTooManyPaths =
    u"Too many folders of the repository '%1' were named at once. Name %2 at most.";
inline constexpr QStringView kPathTwice = u"'%2' is named twice for the repository '%1'. Name it once.";
inline constexpr QStringView kRootCannotBeDeleted =
    u"The root folder of the repository '%1' cannot be deleted. Delete the repository instead.";
inline constexpr QStringView kChangedMeanwhile =
    u"The repository '%1' was changed by others at the same time. Try again.";

inline constexpr QStringView kInvalidName = u"The repository name '%1' is not valid: it %2.";
inline constexpr QStringView kInvalidPath = u"The path '%1' is not valid: it %2.";
inline constexpr QStringView kIsEmpty = u"is empty";
inline constexpr QStringView kHasSlash = u"contains a slash";
inline constexpr QStringView kHasReserved = u"contains a backslash, a colon, an ampersand or a square bracket";
inline constexpr QStringView kHasControl = u"contains a control character or a line break";
inline constexpr QStringView kHasSurrogate = u"contains half of a character";
inline constexpr QStringView kBeginsWithPeriod = u"begins with a period";
inline constexpr QStringView kEndsWithPeriod = u"ends with a period";
inline constexpr QStringView kHasOuterBlank = u"begins or ends with a blank";
inline constexpr QStringView kNameTooLong = u"is longer than 255 bytes";
inline constexpr QStringView kPathTooLong = u"is longer than 4096 bytes";
inline constexpr QStringView kElementTooLong = u"contains a name longer than 255 bytes";
inline constexpr QStringView kNotAbsolute = u"does not begin with a slash";
inline constexpr QStringView kTrailingSlash = u"ends with a slash";
inline constexpr QStringView kEmptyElement = u"contains two slashes in a row";
inline constexpr QStringView kDotElement = u"contains '.' or '..' as a name";

inline constexpr QStringView kCauseLine = u"E%1: %2";
inline constexpr QStringView kAdviceDisk = u"Free space on the server's disk, then try again.";
inline constexpr QStringView kAdviceAccess =
    u"Check that the user account of the server may read and change it on the server's disk.";
inline constexpr QStringView kAdviceExists = u"Choose another name.";
inline constexpr QStringView kAdviceLocked = u"Have the lock released, then try again.";
inline constexpr QStringView kAdviceBusy = u"It is in use; try again later.";

} // namespace quenvolta::texts
