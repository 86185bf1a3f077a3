#include "foundation/exception.h"
#include "model/model.h"
#include "model/update_response.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

void CModel::CheckForUpdates()
{
    if (m_updateService.endpoint.isEmpty() || IsUpdateCheckDisabled())
        return;
    try {
        const QString version = GetServerVersionInfo().version;
        if (!m_downloader)
            m_downloader = m_updateService.createDownloader(*this);
        m_downloader->Download(m_updateService.endpoint + u"?Version="_s + version);
    } catch (const Exception& exception) { // a server is managed as well without the check
        SetUpdateInfo({.status = UpdateCheckStatus::Failed, .errorText = exception.GetMessage()});
    }
}

void CModel::OnDownloadComplete(const QString& path)
{
    SetUpdateInfo(ReadUpdateResponse(path));
}

void CModel::OnDownloadFailed(HRESULT code)
{
    SetUpdateInfo(FailedUpdateCheck(code));
}

void CModel::SetUpdateInfo(const UpdateInfo& info)
{
    m_updateInfo = info;
    m_subscribers.Notify(&IcModelEvents::OnUpdateStateChanged);
}

} // namespace quenvolta
