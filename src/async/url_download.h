#pragma once

#include "platform/hresult.h"

#include <QString>
#include <QTemporaryFile>

#include <chrono>
#include <memory>
#include <stop_token>

namespace quenvolta
{

/// A closed temporary file, removed with this.
using DownloadedFile = std::unique_ptr<QTemporaryFile>;

/// What a download may take.
struct DownloadLimits {
    std::chrono::milliseconds connecting = std::chrono::seconds(10);
    std::chrono::milliseconds all = std::chrono::seconds(30);
    std::int64_t bytes = 1024 * 1024;
    long redirections = 3;
};

/// Fetches an address (http or https) into a temporary file and waits for it. Any thread may call it. The codes of the
/// failures are those of resources/update_texts.def; E_ABORT after a stop was requested.
HRESULT FetchUrl(const QString& url, const std::stop_token& stop, DownloadedFile* file);
HRESULT FetchUrlWithin(const DownloadLimits& limits, const QString& url, const std::stop_token& stop,
                       DownloadedFile* file);

} // namespace quenvolta
