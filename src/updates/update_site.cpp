#include "updates/update_site.h"

#include "async/file_downloader.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kCheckPath = "/server/UpdateCheck.ashx"_L1;

} // namespace

UpdateSite::UpdateSite(const QString& address)
{
    const QUrl url(address, QUrl::StrictMode);
    if (url.isValid() && !url.host().isEmpty() && (url.scheme() == "http"_L1 || url.scheme() == "https"_L1))
        m_address = url.adjusted(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::RemoveUserInfo);
}

UpdateService UpdateSite::Service() const
{
    if (!IsSet())
        return {};
    return {
        .endpoint = m_address.toString(QUrl::FullyEncoded) + kCheckPath,
        .createDownloader = [](IcFileDownloaderEvents& events) { return std::make_unique<CFileDownloader>(events); }};
}

QUrl UpdateSite::PageUrl(const QString& path) const
{
    if (!IsSet())
        return {};
    // Behind the slash nothing can be taken for a host; unsafe characters are escaped.
    const QString rooted = path.startsWith(u'/') ? path : u'/' + path;
    return QUrl(m_address.toString(QUrl::FullyEncoded) + rooted, QUrl::TolerantMode);
}

} // namespace quenvolta
