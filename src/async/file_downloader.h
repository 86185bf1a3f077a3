#pragma once

#include "async/message_only_window.h"
#include "async/url_download.h"
#include "model/file_downloader.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace quenvolta
{

/// Downloads files on one worker thread of its own, and tells of them on the thread that made it.
///
/// Only the outcome of the address asked for last is told. A file is removed when its events have returned, and when
/// its outcome is dropped. The end of the downloader ends a download that is under way, and waits for it.
class CFileDownloader final : public IcFileDownloader, private IcMsgOnlyWindowSubscriber
{
public:
    /// Fetches an address; called on the worker. It should return soon after a stop was requested.
    using Fetch = std::function<HRESULT(const QString& url, const std::stop_token& stop, DownloadedFile* file)>;

    /// The events outlive the downloader. A Win32Exception when the worker can't be started.
    explicit CFileDownloader(IcFileDownloaderEvents& events, Fetch fetch = &FetchUrl);
    ~CFileDownloader() override;
    CFileDownloader(const CFileDownloader&) = delete;
    CFileDownloader& operator=(const CFileDownloader&) = delete;

    void Download(const QString& url) override;

private:
    void OnMessage(std::uint32_t code, std::uintptr_t wParam, std::uintptr_t lParam) override;
    void Work(const std::stop_token& stop);

    IcFileDownloaderEvents& m_events;
    Fetch m_fetch;
    /// Guards what is below; recursive, since an event may ask for the next download.
    std::recursive_mutex m_lock;
    QString m_url;
    DownloadedFile m_result;
    HRESULT m_resultCode = S_OK;
    bool m_isRequested = false;
    std::condition_variable_any m_request;
    CMessageOnlyWindow m_window;
    std::jthread m_worker; // goes first: it uses all of the above
};

} // namespace quenvolta
