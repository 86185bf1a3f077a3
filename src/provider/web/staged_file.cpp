#include "provider/web/staged_file.h"

#include "provider/provider_error.h"
#include "provider/svn/durable_files.h"
#include "provider/unique_fd.h"
#include "provider/web/web_texts.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

[[noreturn]] void Refuse(const QString& path, int error)
{
    const bool full = error == ENOSPC || error == EDQUOT;
    const bool forbidden = error == EACCES || error == EROFS;
    throw ProviderError(full        ? WBEM_E_OUT_OF_DISK_SPACE
                        : forbidden ? WBEM_E_ACCESS_DENIED
                                    : WBEM_E_FAILED,
                        webtexts::kCannotWrite.arg(path, qt_error_string(error)));
}

int WriteAll(int file, const QByteArray& content)
{
    for (qsizetype done = 0; done < content.size();) {
        const ssize_t written =
            ::write(file, content.constData() + done, static_cast<std::size_t>(content.size() - done));
        if (written < 0 && errno != EINTR)
            return errno;
        done += qMax<ssize_t>(written, 0);
    }
    return DurableFiles::Sync(file);
}

} // namespace

StagedFile::StagedFile(const QString& target, const QByteArray& content)
    : m_target(target)
    , m_path(PathFor(target))
{
    const QByteArray path = QFile::encodeName(m_path);
    ::unlink(path.constData()); // what a process that ended left
    const UniqueFd file(
        ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!file.IsOpen())
        Refuse(m_path, errno);
    if (const int error = WriteAll(file.Get(), content); error != 0) {
        ::unlink(path.constData());
        Refuse(m_path, error);
    }
}

StagedFile::StagedFile(StagedFile&& other) noexcept
    : m_target(std::move(other.m_target))
    , m_path(std::exchange(other.m_path, QString()))
{
}

StagedFile::~StagedFile()
{
    if (!m_path.isEmpty())
        ::unlink(QFile::encodeName(m_path).constData());
}

void StagedFile::Install()
{
    if (std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(m_target).constData()) != 0)
        Refuse(m_target, errno);
    m_path.clear();
    const QByteArray folder = QFile::encodeName(QFileInfo(m_target).absolutePath());
    const UniqueFd opened(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen())
        DurableFiles::Sync(opened.Get()); // the change stands and can be seen; only a crash right now could undo it
}

} // namespace quenvolta
