#include "provider/web/repositories_root.h"

#include "provider/provider_error.h"
#include "provider/server_account.h"
#include "provider/svn/repository_names.h"
#include "provider/unique_fd.h"
#include "provider/web/configuration_text.h"
#include "provider/web/web_texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// A folder above the repositories' lets everybody through.
bool MakeShared(const QByteArray& path)
{
    constexpr mode_t kShared = S_IRWXU | S_IRGRP | S_IXGRP | S_IROTH | S_IXOTH;
    if (::mkdir(path.constData(), kShared) == 0)
        return ::chmod(path.constData(), kShared) == 0; // whatever this process masks out
    return errno == EEXIST;
}

UniqueFd OpenFolder(int parent, const char* name)
{
    return UniqueFd(::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// Hands over the names in an open folder.
void Visit(int folder, const std::function<void(const char*)>& visitor)
{
    struct Closer {
        void operator()(DIR* entries) const { ::closedir(entries); }
    };
    UniqueFd own = OpenFolder(folder, ".");
    const std::unique_ptr<DIR, Closer> entries(own.IsOpen() ? ::fdopendir(::dup(own.Get())) : nullptr);
    if (!entries)
        return;
    while (const dirent* entry = ::readdir(entries.get())) {
        const QByteArrayView name(entry->d_name);
        if (name != "." && name != "..")
            visitor(entry->d_name);
    }
}

bool Exists(int folder, const char* name)
{
    struct stat status {
    };
    return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0;
}

bool HoldsRepositoriesOnly(int root)
{
    bool only = true;
    Visit(root, [&](const char* name) {
        const UniqueFd folder = OpenFolder(root, name);
        const bool isRepository = folder.IsOpen() && Exists(folder.Get(), "format") && Exists(folder.Get(), "db");
        only = only && (isRepository || QByteArrayView(name) == "lost+found"); // a disk's own
    });
    return only;
}

// Never follows a link, and leaves files with several names alone: another name may be anywhere.
void GiveTree(int folder, uid_t account, gid_t group)
{
    if (::fchown(folder, account, group) != 0)
        return; // RequireAccess tells when that matters
    Visit(folder, [&](const char* name) {
        struct stat status {
        };
        if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
            return;
        if (S_ISDIR(status.st_mode)) {
            if (const UniqueFd inner = OpenFolder(folder, name); inner.IsOpen())
                GiveTree(inner.Get(), account, group);
        } else if (S_ISREG(status.st_mode) && status.st_nlink == 1) {
            static_cast<void>(::fchownat(folder, name, account, group, AT_SYMLINK_NOFOLLOW));
        }
    });
}

} // namespace

RepositoriesRoot::RepositoriesRoot(const QString& path)
    : m_path(QDir::cleanPath(path))
{
    ConfigurationText::Quote(path);
    if (!path.startsWith(u'/'))
        throw ProviderError(WBEM_E_INVALID_PARAMETER, webtexts::kRootNotAbsolute.arg(RepositoryNames::Show(path)));
}

bool RepositoriesRoot::Exists() const
{
    const ServerAccount::Elevation elevation;
    const QFileInfo folder(m_path);
    if (folder.exists() && !folder.isDir())
        throw ProviderError(WBEM_E_INVALID_PARAMETER, webtexts::kRootNotAFolder.arg(m_path));
    return folder.exists();
}

void RepositoriesRoot::Make() const
{
    const uid_t account = ::geteuid();
    const gid_t group = ::getegid();
    const ServerAccount::Elevation elevation;
    const QByteArray path = QFile::encodeName(m_path);
    bool made = true;
    for (qsizetype slash = path.indexOf('/', 1); made && slash > 0; slash = path.indexOf('/', slash + 1))
        made = MakeShared(path.first(slash));
    made = made && ::mkdir(path.constData(), S_IRWXU) == 0 && ::lchown(path.constData(), account, group) == 0;
    if (!made)
        throw ProviderError(errno == EACCES || errno == EROFS ? WBEM_E_ACCESS_DENIED : WBEM_E_FAILED,
                            webtexts::kCannotMakeRoot.arg(m_path, qt_error_string(errno)));
}

void RepositoriesRoot::HandOver() const
{
    const uid_t account = ::geteuid();
    const gid_t group = ::getegid();
    const ServerAccount::Elevation elevation;
    if (::geteuid() != 0 || account == 0)
        return;
    const UniqueFd root(::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (root.IsOpen() && HoldsRepositoriesOnly(root.Get()))
        GiveTree(root.Get(), account, group);
}

void RepositoriesRoot::RequireAccess() const
{
    const QByteArray path = QFile::encodeName(m_path);
    if (::faccessat(AT_FDCWD, path.constData(), R_OK | W_OK | X_OK, AT_EACCESS) != 0)
        throw ProviderError(WBEM_E_ACCESS_DENIED,
                            webtexts::kRootUnusable.arg(ServerAccount::NameOf(::geteuid()), m_path));
}

} // namespace quenvolta
