#include "provider/certificates/private_folder.h"

#include "provider/certificates/certificate_texts.h"
#include "provider/provider_error.h"
#include "provider/svn/durable_files.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <openssl/crypto.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr mode_t kFileMode = S_IRUSR | S_IWUSR;
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr qsizetype kLargestFile = 4 * 1024 * 1024;
constexpr std::size_t kPiece = 4096;

HRESULT CodeOf(int error)
{
    if (error == ENOSPC || error == EDQUOT)
        return WBEM_E_OUT_OF_DISK_SPACE;
    return error == EACCES || error == EPERM || error == EROFS ? WBEM_E_ACCESS_DENIED : WBEM_E_FAILED;
}

// Appends the whole file; 0 or the system's error number.
int ReadAll(int file, SecretText& text)
{
    std::array<char, kPiece> piece{};
    const std::unique_ptr<std::array<char, kPiece>,
                          decltype([](std::array<char, kPiece>* each) { OPENSSL_cleanse(each->data(), each->size()); })>
        wiper(&piece);
    for (;;) {
        const ssize_t count = ::read(file, piece.data(), piece.size());
        if (count == 0)
            return 0;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        if (text.View().size() + count > kLargestFile)
            return EFBIG;
        text.Append({piece.data(), count});
    }
}

int WriteAll(int file, QByteArrayView text)
{
    while (!text.isEmpty()) {
        const ssize_t count = ::write(file, text.data(), static_cast<std::size_t>(text.size()));
        if (count < 0 && errno != EINTR)
            return errno;
        text = text.sliced(count < 0 ? 0 : count);
    }
    return 0;
}

} // namespace

PrivateFolder::PrivateFolder(QString path, UniqueFd folder)
    : m_path(std::move(path))
    , m_folder(std::move(folder))
{
}

std::optional<PrivateFolder> PrivateFolder::Open(const QString& path)
{
    UniqueFd folder(::open(QFile::encodeName(path).constData(), kFolderFlags));
    if (folder.IsOpen())
        return PrivateFolder(path, std::move(folder));
    if (errno == ENOENT)
        return std::nullopt;
    const int error = errno;
    throw ProviderError(CodeOf(error), certificatetexts::kCannotUseFolder.arg(path, qt_error_string(error)));
}

PrivateFolder PrivateFolder::Make(const QString& path)
{
    const bool made = ::mkdir(QFile::encodeName(path).constData(), S_IRWXU) == 0;
    const int error = errno;
    std::optional<PrivateFolder> folder = made || error == EEXIST ? Open(path) : std::nullopt;
    if (!folder)
        throw ProviderError(CodeOf(error), certificatetexts::kCannotUseFolder.arg(path, qt_error_string(error)));
    return std::move(*folder);
}

std::optional<PrivateFolder> PrivateFolder::Find(const QString& path)
{
    return Open(path);
}

PrivateFolder PrivateFolder::MakeFolder(const QByteArray& name) const
{
    return Make(PathOf(name));
}

std::optional<PrivateFolder> PrivateFolder::FindFolder(const QByteArray& name) const
{
    return Open(PathOf(name));
}

QString PrivateFolder::PathOf(const QByteArray& name) const
{
    return m_path + u'/' + QFile::decodeName(name);
}

void PrivateFolder::Refuse(bool writing, const QByteArray& name, int error) const
{
    const replies::Text& text = writing ? certificatetexts::kCannotWrite : certificatetexts::kCannotRead;
    throw ProviderError(CodeOf(error), text.arg(PathOf(name), qt_error_string(error)));
}

QByteArrayList PrivateFolder::Names() const
{
    const std::unique_ptr<DIR, decltype([](DIR* each) { ::closedir(each); })> stream(
        ::fdopendir(::openat(m_folder.Get(), ".", kFolderFlags)));
    if (!stream)
        Refuse(false, {}, errno);
    QByteArrayList names;
    while (const dirent* entry = ::readdir(stream.get())) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..")
            names.append(name);
    }
    return names;
}

qint64 PrivateFolder::WrittenAt(const QByteArray& name) const
{
    constexpr qint64 kPerSecond = 1'000'000'000;
    struct stat status {
    };
    if (::fstatat(m_folder.Get(), name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return 0;
    return qint64{status.st_mtim.tv_sec} * kPerSecond + status.st_mtim.tv_nsec;
}

std::optional<SecretText> PrivateFolder::Read(const QByteArray& name, Links links) const
{
    // Never waits, should somebody have put a pipe there.
    const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | (links == Links::Followed ? 0 : O_NOFOLLOW);
    const UniqueFd file(::openat(m_folder.Get(), name.constData(), flags));
    if (!file.IsOpen() && errno == ENOENT)
        return std::nullopt;
    SecretText text;
    if (const int error = file.IsOpen() ? ReadAll(file.Get(), text) : errno; error != 0)
        Refuse(false, name, error);
    return text;
}

void PrivateFolder::Write(const QByteArray& name, QByteArrayView text) const
{
    const UniqueFd file(
        ::openat(m_folder.Get(), name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kFileMode));
    if (!file.IsOpen())
        Refuse(true, name, errno);
    int error = WriteAll(file.Get(), text);
    if (error == 0)
        error = DurableFiles::Sync(file.Get());
    SecretText readBack;
    if (error == 0 && ::lseek(file.Get(), 0, SEEK_SET) != 0)
        error = errno;
    if (error == 0)
        error = ReadAll(file.Get(), readBack);
    if (error == 0 && readBack.View() != text)
        throw ProviderError(WBEM_E_FAILED, certificatetexts::kCannotWrite.arg(
                                               PathOf(name), certificatetexts::kReadBackDiffers.Whole()));
    if (error != 0)
        Refuse(true, name, error);
}

void PrivateFolder::PointTo(const QByteArray& name, const QByteArray& target) const
{
    const QByteArray hidden = '.' + name;
    Remove(hidden);
    if (::symlinkat(target.constData(), m_folder.Get(), hidden.constData()) != 0)
        Refuse(true, name, errno);
    Move(hidden, name);
}

QByteArray PrivateFolder::TargetOf(const QByteArray& name) const
{
    std::array<char, kPiece> target{};
    const ssize_t size = ::readlinkat(m_folder.Get(), name.constData(), target.data(), target.size());
    return size < 0 ? QByteArray() : QByteArray(target.data(), size);
}

void PrivateFolder::Move(const QByteArray& from, const QByteArray& to) const
{
    if (::renameat(m_folder.Get(), from.constData(), m_folder.Get(), to.constData()) != 0)
        Refuse(true, to, errno);
}

void PrivateFolder::Remove(const QByteArray& name) const noexcept
{
    if (::unlinkat(m_folder.Get(), name.constData(), 0) == 0 || errno != EISDIR)
        return;
    try {
        if (const std::optional<PrivateFolder> folder = FindFolder(name)) {
            for (const QByteArray& each : folder->Names())
                ::unlinkat(folder->m_folder.Get(), each.constData(), 0);
        }
        ::unlinkat(m_folder.Get(), name.constData(), AT_REMOVEDIR);
    } catch (...) {
        return;
    }
}

void PrivateFolder::Sync() const
{
    if (const int error = DurableFiles::Sync(m_folder.Get()); error != 0)
        throw ProviderError(CodeOf(error), certificatetexts::kCannotUseFolder.arg(m_path, qt_error_string(error)));
}

} // namespace quenvolta
