#include "provider/hooks/repository_hooks.h"

#include "provider/hooks/hook_kind.h"
#include "provider/hooks/hook_texts.h"
#include "provider/provider_error.h"
#include "provider/svn/durable_files.h"
#include "provider/svn/hidden_folder.h"
#include "provider/svn/svn_failure.h"

#include <QFile>
#include <QStringConverter>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

struct RepositoryHooks::Hook {
    const char* file;
    QString name;
};

namespace
{

constexpr char kStaged[] = "hook";

// At most `most` bytes from where the file stands; errno tells why there are none.
std::optional<QByteArray> ReadAll(int file, qsizetype most)
{
    QByteArray content(most, Qt::Uninitialized);
    qsizetype length = 0;
    while (length < most) {
        const ssize_t count = ::read(file, content.data() + length, static_cast<std::size_t>(most - length));
        if (count == 0)
            break;
        if (count > 0)
            length += count;
        else if (errno != EINTR)
            return std::nullopt;
    }
    content.truncate(length);
    return content;
}

int WriteAll(int file, QByteArrayView content)
{
    while (!content.isEmpty()) {
        const ssize_t count = ::write(file, content.data(), static_cast<std::size_t>(content.size()));
        if (count >= 0)
            content = content.sliced(count);
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

// A script file of its own in `folder`, on the disk, and read back. Returns 0 or the system's error number.
int WriteScript(int folder, const QByteArray& script)
{
    const UniqueFd file(
        ::openat(folder, kStaged, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file.IsOpen())
        return errno;
    if (const int error = WriteAll(file.Get(), script); error != 0)
        return error;
    if (::fchmod(file.Get(), S_IRWXU) != 0 || ::lseek(file.Get(), 0, SEEK_SET) != 0)
        return errno;
    if (const int error = DurableFiles::Sync(file.Get()); error != 0)
        return error;
    return ReadAll(file.Get(), script.size() + 1) == script ? 0 : EIO;
}

bool IsUtf8(const QByteArray& script)
{
    return QByteArrayView(script).isValidUtf8();
}

} // namespace

RepositoryHooks::RepositoryHooks(QString root, QString folder, QString repositoryName)
    : m_root(std::move(root))
    , m_folder(std::move(folder))
    , m_name(std::move(repositoryName))
{
}

std::optional<QString> RepositoryHooks::Read(qint32 kind) const
{
    const Hook hook = Require(kind);
    const std::optional<QByteArray> content = Content(hook);
    if (!content)
        return std::nullopt;
    if (content->size() > kLongestScript)
        throw ProviderError(WBEM_E_FAILED,
                            replies::kHookTooLong.arg(hook.name, m_name, QString::number(kLongestScript)));
    if (content->contains('\0'))
        Refuse(hook, replies::kHookNoText);
    if (!IsUtf8(*content))
        return QString::fromLatin1(*content);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
    return QString(decoder(*content));
}

void RepositoryHooks::Write(qint32 kind, const QString& text) const
{
    const Hook hook = Require(kind);
    const QByteArray script = Encode(hook, text);
    ::mkdir(FolderPath().constData(), S_IRWXU); // nearly always there
    const UniqueFd hooks = OpenFolder(hook);
    if (!hooks.IsOpen())
        Fail(hook, replies::kCannotWriteHook, errno);
    int error = Replace(hook, hooks.Get(), script, m_root);
    if (error == EXDEV) { // the repository is a link to another disk
        const QString folder = QFile::decodeName(FolderPath());
        HiddenFolder::RemoveLeftovers(folder);
        error = Replace(hook, hooks.Get(), script, folder);
    }
    if (error == EISDIR)
        Refuse(hook, replies::kHookIsFolder);
    if (error != 0)
        Fail(hook, replies::kCannotWriteHook, error);
    DurableFiles::Sync(hooks.Get()); // it stands already; only a crash right now could undo it
}

void RepositoryHooks::Delete(qint32 kind) const
{
    const Hook hook = Require(kind);
    const UniqueFd hooks = OpenFolder(hook);
    if (!hooks.IsOpen() && errno == ENOENT)
        return;
    if (!hooks.IsOpen())
        Fail(hook, replies::kCannotDeleteHook, errno);
    if (::unlinkat(hooks.Get(), hook.file, 0) != 0) {
        if (errno == ENOENT)
            return;
        if (errno == EISDIR)
            Refuse(hook, replies::kHookIsFolder);
        Fail(hook, replies::kCannotDeleteHook, errno);
    }
    DurableFiles::Sync(hooks.Get());
}

RepositoryHooks::Hook RepositoryHooks::Require(qint32 kind) const
{
    if (kind < 0 || static_cast<std::size_t>(kind) >= kHookNames.size())
        throw ProviderError(WBEM_E_INVALID_PARAMETER, replies::kUnknownHook.arg(kind));
    const char* file = kHookNames.at(static_cast<std::size_t>(kind));
    return {file, QString::fromLatin1(file)};
}

QByteArray RepositoryHooks::FolderPath() const
{
    return QFile::encodeName(m_folder + "/hooks"_L1);
}

// Closed when it can't be opened; errno tells why.
UniqueFd RepositoryHooks::OpenFolder(const Hook& hook) const
{
    const QByteArray path = FolderPath();
    UniqueFd folder(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    const int error = errno;
    struct stat status {
    };
    if (!folder.IsOpen() && ::lstat(path.constData(), &status) == 0 && S_ISLNK(status.st_mode))
        Refuse(hook, replies::kHooksFolderIsLink);
    errno = error;
    return folder;
}

// One byte more than a script may have, when it is longer.
std::optional<QByteArray> RepositoryHooks::Content(const Hook& hook) const
{
    const QByteArray path = FolderPath() + '/' + hook.file;
    struct stat status {
    };
    if (::lstat(path.constData(), &status) != 0) {
        if (errno == ENOENT)
            return std::nullopt;
        Fail(hook, replies::kCannotReadHook, errno);
    }
    // Without waiting, for a named pipe would wait for its writer.
    const UniqueFd file(::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.IsOpen() && errno == ENOENT && S_ISLNK(status.st_mode))
        return QByteArray();
    if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0)
        Fail(hook, replies::kCannotReadHook, errno);
    if (!S_ISREG(status.st_mode))
        return std::nullopt;
    std::optional<QByteArray> content = ReadAll(file.Get(), std::min<qsizetype>(status.st_size, kLongestScript) + 1);
    if (!content)
        Fail(hook, replies::kCannotReadHook, errno);
    return content;
}

QByteArray RepositoryHooks::Encode(const Hook& hook, const QString& text) const
{
    if (text.contains(QChar(u'\0')) || !text.isValidUtf16())
        Refuse(hook, replies::kHookTextInvalid);
    QByteArray script = text.toUtf8();
    if (script.size() > kLongestScript)
        throw ProviderError(WBEM_E_INVALID_PARAMETER,
                            replies::kHookTooLong.arg(hook.name, m_name, QString::number(kLongestScript)));
    const bool fitsLatin1 = std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() <= 0xFF; });
    if (fitsLatin1 && script.size() != text.size()) {
        const std::optional<QByteArray> present = Content(hook);
        if (present && !IsUtf8(*present))
            return text.toLatin1();
    }
    return script;
}

// Returns 0 or the system's error number.
int RepositoryHooks::Replace(const Hook& hook, int hooks, const QByteArray& script, const QString& stagingRoot) const
{
    const UniqueFd root(::open(QFile::encodeName(stagingRoot).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!root.IsOpen())
        return errno;
    const HiddenFolder staging(stagingRoot, root.Get(), HiddenFolder::kCreating);
    if (const int error = WriteScript(staging.Fd(), script); error != 0)
        return error;
    return ::renameat(staging.Fd(), kStaged, hooks, hook.file) == 0 ? 0 : errno;
}

void RepositoryHooks::Refuse(const Hook& hook, const replies::Text& text) const
{
    throw ProviderError(WBEM_E_INVALID_PARAMETER, text.arg(hook.name, m_name));
}

void RepositoryHooks::Fail(const Hook& hook, const replies::Text& what, int error) const
{
    ThrowSystemError(error, what.arg(hook.name, m_name));
}

} // namespace quenvolta
