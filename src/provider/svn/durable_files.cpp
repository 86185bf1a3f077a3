#include "provider/svn/durable_files.h"

#include "provider/unique_fd.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace quenvolta
{

namespace
{

int SyncPath(const std::filesystem::path& path)
{
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    return file.IsOpen() ? DurableFiles::Sync(file.Get()) : errno;
}

} // namespace

int DurableFiles::MoveNoReplace(int fromFolder, const char* from, int toFolder, const char* to)
{
    if (::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    // Network file systems don't know the flag: look first. What could come between is an empty folder at worst, for a
    // folder replaces nothing else.
    struct stat status {
    };
    if (::fstatat(toFolder, to, &status, AT_SYMLINK_NOFOLLOW) == 0)
        return EEXIST;
    return ::renameat(fromFolder, from, toFolder, to) == 0 ? 0 : errno;
}

int DurableFiles::Sync(int descriptor)
{
    // Some file systems can't sync a folder, and say so with EINVAL: there is nothing more to do then.
    return ::fsync(descriptor) == 0 || errno == EINVAL ? 0 : errno;
}

void DurableFiles::SyncFileSystem(const QString& path)
{
    const UniqueFd folder(::open(path.toUtf8().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen())
        ::syncfs(folder.Get());
}

int DurableFiles::SyncTree(const QString& path, const CancelCheck& cancel)
{
    const std::filesystem::path top(path.toStdString());
    std::error_code error;
    for (std::filesystem::recursive_directory_iterator entry(top, error), end; !error && entry != end;
         entry.increment(error)) {
        ThrowIfCancelled(cancel);
        if (entry->is_symlink())
            continue; // its folder holds all there is of it
        if (const int failure = SyncPath(entry->path()); failure != 0)
            return failure;
    }
    return error ? error.value() : SyncPath(top);
}

} // namespace quenvolta
