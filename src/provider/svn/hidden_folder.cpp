#include "provider/svn/hidden_folder.h"

#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"
#include "provider/svn/repository_texts.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_log.h"

#include <QDir>
#include <QRegularExpression>
#include <QUuid>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kMaxAttempts = 16;

UniqueFd OpenFolder(int parent, const QByteArray& name)
{
    return UniqueFd(::openat(parent, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// A cleaning process may have taken the new folder for a leftover before it was locked: it must still be there after.
bool IsStillNamed(int parent, const QByteArray& name, int folder)
{
    struct stat named {
    };
    struct stat opened {
    };
    return ::fstatat(parent, name.constData(), &named, AT_SYMLINK_NOFOLLOW) == 0 && ::fstat(folder, &opened) == 0 &&
           named.st_ino == opened.st_ino && named.st_dev == opened.st_dev;
}

// The standard library removes by descriptor with O_NOFOLLOW, so a link put in meanwhile isn't followed either.
int RemoveTree(const QString& path)
{
    std::error_code error;
    std::filesystem::remove_all(std::filesystem::path(path.toStdString()), error);
    return error.value();
}

} // namespace

HiddenFolder::HiddenFolder(const QString& root, int rootFd, QStringView prefix)
{
    int error = 0;
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        const QString name = prefix.toString() + QUuid::createUuid().toString(QUuid::Id128);
        const QByteArray encoded = name.toUtf8();
        if (::mkdirat(rootFd, encoded.constData(), S_IRWXU) != 0) {
            error = errno;
            break;
        }
        errno = EAGAIN; // what it is when nothing fails but the folder was taken away
        UniqueFd folder = OpenFolder(rootFd, encoded);
        // A shared lock, because network file systems allow an exclusive one only on what is open for writing.
        if (folder.IsOpen() && ::flock(folder.Get(), LOCK_SH | LOCK_NB) == 0 &&
            IsStillNamed(rootFd, encoded, folder.Get())) {
            m_folder = std::move(folder);
            m_path = QDir(root).filePath(name);
            return;
        }
        error = errno;
        ::unlinkat(rootFd, encoded.constData(), AT_REMOVEDIR);
    }
    ThrowSystemError(error, texts::kCannotMakeHidden.toString().arg(root));
}

HiddenFolder::~HiddenFolder()
{
    if (const int error = Remove(); error != 0)
        qCWarning(logSvn) << "cannot remove" << m_path << qt_error_string(error);
}

QString HiddenFolder::ContentPath() const
{
    return m_path + u'/' + QLatin1StringView(kContent);
}

int HiddenFolder::Remove()
{
    return RemoveTree(m_path);
}

int HiddenFolder::RemoveLeftovers(const QString& root)
{
    static const QRegularExpression ownName(u"^\\.(creating|deleting)-[0-9a-f]{32}$"_s);
    const UniqueFd rootFd(::open(QFile::encodeName(root).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!rootFd.IsOpen())
        return 0;
    int removed = 0;
    const QStringList names = QDir(root).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString& name : names.filter(ownName)) {
        const UniqueFd folder = OpenFolder(rootFd.Get(), name.toUtf8());
        if (!folder.IsOpen() || ::flock(folder.Get(), LOCK_EX | LOCK_NB) != 0)
            continue;
        const QString path = QDir(root).filePath(name);
        if (const int error = RemoveTree(path); error != 0)
            qCWarning(logSvn) << "cannot remove" << path << qt_error_string(error);
        else
            ++removed;
    }
    return removed;
}

} // namespace quenvolta
