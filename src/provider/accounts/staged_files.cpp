#include "provider/accounts/staged_files.h"

#include "provider/accounts/account_texts.h"
#include "provider/provider_error.h"
#include "provider/svn/durable_files.h"
#include "provider/svn/svn_failure.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

QByteArray TemporaryOf(const QString& name)
{
    return QFile::encodeName(u'.' + name + ".new"_L1);
}

// 0 or the system's error number.
int WriteAll(int file, QByteArrayView content)
{
    while (!content.isEmpty()) {
        const ssize_t written = ::write(file, content.data(), static_cast<std::size_t>(content.size()));
        if (written < 0 && errno != EINTR)
            return errno;
        content = content.sliced(written < 0 ? 0 : written);
    }
    return DurableFiles::Sync(file);
}

// Whatever can be read of the file from its beginning, at most one byte more than is expected of it.
QByteArray ReadBack(int file, qsizetype expected)
{
    QByteArray content(expected + 1, Qt::Uninitialized);
    qsizetype size = 0;
    while (size < content.size()) {
        const ssize_t count =
            ::pread(file, content.data() + size, static_cast<std::size_t>(content.size() - size), size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        size += count;
    }
    content.truncate(size);
    return content;
}

} // namespace

StagedFiles::StagedFiles(const QString& folder)
    : m_folderPath(folder)
    , m_folder(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (!m_folder.IsOpen())
        ThrowSystemError(errno, accounttexts::kCannotWriteFile.arg(folder));
}

StagedFiles::~StagedFiles()
{
    for (const QString& name : std::as_const(m_names))
        ::unlinkat(m_folder.Get(), TemporaryOf(name).constData(), 0);
}

void StagedFiles::Stage(const QString& name, const QByteArray& content)
{
    const QByteArray temporary = TemporaryOf(name);
    const QString path = m_folderPath + u'/' + name;
    ::unlinkat(m_folder.Get(), temporary.constData(), 0);
    const UniqueFd file(::openat(m_folder.Get(), temporary.constData(),
                                 O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file.IsOpen())
        ThrowSystemError(errno, accounttexts::kCannotWriteFile.arg(path));
    m_names.append(name);
    if (const int error = WriteAll(file.Get(), content); error != 0)
        ThrowSystemError(error, accounttexts::kCannotWriteFile.arg(path));
    if (ReadBack(file.Get(), content.size()) != content)
        throw ProviderError(WBEM_E_FAILED, accounttexts::kReadBackDiffers.arg(path));
}

bool StagedFiles::StageIfNew(const QString& name, const QByteArray& content)
{
    const QByteArray encoded = QFile::encodeName(name);
    const UniqueFd file(::openat(m_folder.Get(), encoded.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (file.IsOpen() && ReadBack(file.Get(), content.size()) == content)
        return false;
    Stage(name, content);
    return true;
}

void StagedFiles::Commit()
{
    while (!m_names.isEmpty()) {
        const QString& name = m_names.first();
        if (::renameat(m_folder.Get(), TemporaryOf(name).constData(), m_folder.Get(),
                       QFile::encodeName(name).constData()) != 0)
            ThrowSystemError(errno, accounttexts::kCannotReplace.arg(m_folderPath + u'/' + name));
        m_names.removeFirst();
        // All others are on the disk before the last one is, and then that.
        if (const int error = m_names.size() <= 1 ? DurableFiles::Sync(m_folder.Get()) : 0; error != 0)
            ThrowSystemError(error, accounttexts::kCannotReplace.arg(m_folderPath));
    }
}

void StagedFiles::RemoveLeftover(const QString& folder, const QString& name)
{
    QFile::remove(folder + u'/' + QFile::decodeName(TemporaryOf(name)));
}

} // namespace quenvolta
