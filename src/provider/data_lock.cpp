#include "provider/data_lock.h"

#include "provider/provider_error.h"
#include "provider/provider_texts.h"

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kLongestWaitMs = 30'000;
constexpr int kPauseMs = 5;

[[noreturn]] void Refuse(const QString& dataFolder, int reason)
{
    throw ProviderError(reason == EACCES ? WBEM_E_ACCESS_DENIED : WBEM_E_FAILED,
                        replies::kCannotLock.arg(dataFolder, QString::fromLocal8Bit(std::strerror(reason))));
}

} // namespace

DataLock::DataLock(const QString& dataFolder, const CancelCheck& cancel, Patience patience)
{
    // A file of its own that nothing replaces; flock, since closing any other descriptor of it must not drop the lock.
    const QByteArray path = QFile::encodeName(dataFolder + "/lock"_L1);
    m_file = UniqueFd(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    const QDeadlineTimer deadline(patience == Patience::Endless ? -1 : kLongestWaitMs);
    if (!m_file.IsOpen())
        Refuse(dataFolder, errno);
    while (::flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            Refuse(dataFolder, errno);
        ThrowIfCancelled(cancel);
        if (deadline.hasExpired())
            throw ProviderError(WBEM_E_FAILED, replies::kFolderBusy.arg(dataFolder));
        ::poll(nullptr, 0, kPauseMs);
    }
}

} // namespace quenvolta
