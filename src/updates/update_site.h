#pragma once

#include "model/file_downloader.h"

#include <QString>
#include <QUrl>

namespace quenvolta
{

/// The maker's site that knows the newest server. It is configured here alone: $QUENVOLTA_UPDATE_SITE
/// ("http://updates.example.org"). Without it, nothing is ever requested.
class UpdateSite
{
public:
    /// Anything but an http or https address counts as none.
    explicit UpdateSite(const QString& address = qEnvironmentVariable("QUENVOLTA_UPDATE_SITE"));

    bool IsSet() const { return !m_address.isEmpty(); }
    /// The service for the model, which asks on a worker thread.
    UpdateService Service() const;
    /// The address of a page of the site; empty without a site. The path comes from the service: it can't lead to
    /// another site.
    QUrl PageUrl(const QString& path) const;

private:
    QUrl m_address;
};

} // namespace quenvolta
