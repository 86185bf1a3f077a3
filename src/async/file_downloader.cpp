#include "async/file_downloader.h"

#include "foundation/win32_exception.h"

#include <system_error>
#include <utility>

namespace quenvolta
{

namespace
{

constexpr std::uint32_t kDownloadEnded = 1;

} // namespace

CFileDownloader::CFileDownloader(IcFileDownloaderEvents& events, Fetch fetch)
    : m_events(events)
    , m_fetch(std::move(fetch))
    , m_window(*this)
{
    try {
        m_worker = std::jthread([this](const std::stop_token& stop) { Work(stop); });
    } catch (const std::system_error& error) {
        throw Win32Exception(error.code().value(), u"Cannot create a worker thread");
    }
}

CFileDownloader::~CFileDownloader() = default;

void CFileDownloader::Download(const QString& url)
{
    const std::lock_guard guard(m_lock);
    m_url = url;
    m_result.reset();
    m_resultCode = S_OK;
    m_isRequested = true;
    m_request.notify_one();
}

void CFileDownloader::OnMessage(std::uint32_t code, std::uintptr_t /*wParam*/, std::uintptr_t /*lParam*/)
{
    if (code != kDownloadEnded)
        return;
    const std::lock_guard guard(m_lock);
    const DownloadedFile file = std::exchange(m_result, nullptr);
    if (Failed(m_resultCode))
        m_events.OnDownloadFailed(m_resultCode);
    else
        m_events.OnDownloadComplete(file ? file->fileName() : QString());
}

void CFileDownloader::Work(const std::stop_token& stop)
{
    std::unique_lock guard(m_lock);
    while (true) {
        m_request.wait(guard, stop, [this] { return m_isRequested; });
        if (stop.stop_requested()) // also when there is a request, too
            return;
        m_isRequested = false;
        const QString url = m_url;

        guard.unlock();
        DownloadedFile file;
        const HRESULT code = m_fetch(url, stop, &file);
        guard.lock();

        if (stop.stop_requested() || url != m_url)
            continue; // nobody waits for it any more
        m_result = std::move(file);
        m_resultCode = code;
        m_window.PostNotification(kDownloadEnded, 0, 0);
    }
}

} // namespace quenvolta
