#pragma once

#include "platform/hresult.h"

#include <QString>

#include <functional>
#include <memory>

namespace quenvolta
{

/// Receives what became of a download, on the thread that made the downloader. Neither operation throws.
class IcFileDownloaderEvents
{
public:
    virtual ~IcFileDownloaderEvents() = default;
    /// The file holds what was downloaded, until this returns. An empty path: a newer download has begun meanwhile.
    virtual void OnDownloadComplete(const QString& path) = 0;
    virtual void OnDownloadFailed(HRESULT code) = 0;
};

/// Downloads one address at a time.
class IcFileDownloader
{
public:
    virtual ~IcFileDownloader() = default;
    /// Returns at once. Takes the place of a download that is under way.
    virtual void Download(const QString& url) = 0;
};

/// Makes a downloader; the events outlive it.
using FileDownloaderFactory = std::function<std::unique_ptr<IcFileDownloader>(IcFileDownloaderEvents& events)>;

/// Whom the model asks for updates of the server.
struct UpdateService {
    /// The address that answers, without a query; with none, nothing is ever requested.
    QString endpoint = {};
    FileDownloaderFactory createDownloader = {};
};

} // namespace quenvolta
