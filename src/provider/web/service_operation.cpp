#include "provider/web/service_operation.h"

#include "provider/provider_error.h"
#include "provider/web/web_texts.h"

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace quenvolta
{

namespace
{

constexpr int kLongestWaitMs = 30'000;
constexpr int kPauseMs = 10;

} // namespace

ServiceOperation::ServiceOperation(const WebFolder& folder, Kind kind, const CancelCheck& cancel)
{
    const QString path = folder.OperationLock();
    m_file = UniqueFd(
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!m_file.IsOpen())
        throw ProviderError(errno == EACCES ? WBEM_E_ACCESS_DENIED : WBEM_E_FAILED,
                            webtexts::kCannotWrite.arg(path, qt_error_string(errno)));
    const QDeadlineTimer deadline(kLongestWaitMs);
    while (::flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0) {
        ThrowIfCancelled(cancel);
        if (deadline.hasExpired())
            throw ProviderError(WBEM_E_FAILED, webtexts::kOperationBusy.Whole());
        ::poll(nullptr, 0, kPauseMs);
    }
    const char mark = static_cast<char>(kind);
    if (::pwrite(m_file.Get(), &mark, 1, 0) != 1)
        throw ProviderError(WBEM_E_FAILED, webtexts::kCannotWrite.arg(path, qt_error_string(errno)));
}

std::optional<ServiceOperation::Kind> ServiceOperation::UnderWay(const WebFolder& folder)
{
    const UniqueFd file(
        ::open(QFile::encodeName(folder.OperationLock()).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file.IsOpen() || ::flock(file.Get(), LOCK_SH | LOCK_NB) == 0 || errno != EWOULDBLOCK)
        return std::nullopt;
    char mark = static_cast<char>(Kind::Start);
    if (::pread(file.Get(), &mark, 1, 0) != 1)
        return std::nullopt;
    return mark == static_cast<char>(Kind::Stop) ? Kind::Stop : Kind::Start;
}

} // namespace quenvolta
