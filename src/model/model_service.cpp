#include "model/model.h"
#include "model/server_proxy.h"

namespace quenvolta
{

ServerVersionInfo CModel::GetServerVersionInfo()
{
    return GetProxy().GetServerVersionInfo();
}

ServerSettings CModel::GetServerSettings()
{
    return GetProxy().GetServerSettings();
}

ServerStatus CModel::GetServerStatus()
{
    return GetProxy().GetServerStatus();
}

std::uint32_t CModel::GetHttpServiceState()
{
    return GetProxy().GetHttpServiceState();
}

ServiceExitState CModel::GetHttpServiceExitState()
{
    return GetProxy().GetHttpServiceExitState();
}

ServiceStatus CModel::GetQdfsServiceState()
{
    return GetProxy().GetQdfsServiceState();
}

ServiceExitState CModel::GetQdfsServiceExitState()
{
    return GetProxy().GetQdfsServiceExitState();
}

std::unique_ptr<CComputerDirectory> CModel::OpenComputerDirectory()
{
    return GetProxy().OpenComputerDirectory();
}

QStringList CModel::GetServerIpAddresses()
{
    return GetProxy().GetServerIpAddresses();
}

void CModel::StartHttpService()
{
    GetProxy().StartHttpService();
}

void CModel::StopHttpService()
{
    GetProxy().StopHttpService();
}

void CModel::RestartHttpService()
{
    GetProxy().RestartHttpService();
}

void CModel::StartQdfsService()
{
    GetProxy().StartQdfsService();
}

void CModel::StopQdfsService()
{
    GetProxy().StopQdfsService();
}

void CModel::ChangeQdfsStartMode(std::uint32_t startMode)
{
    GetProxy().ChangeQdfsStartMode(startMode);
}

void CModel::EnableQdfsService()
{
    ChangeQdfsStartMode(kStartModeAutomatic);
}

void CModel::SetAuthenticationOptions(const AuthenticationOptions& options)
{
    GetProxy().SetAuthenticationOptions(options);
    m_subscribers.Notify(&IcModelEvents::OnServerSettingsChanged);
}

void CModel::SetNetworkOptions(bool useSecureConnection, std::int32_t port, const std::optional<QStringList>& addresses)
{
    GetProxy().SetNetworkOptions(useSecureConnection, port, addresses);
    m_subscribers.Notify(&IcModelEvents::OnServerSettingsChanged);
}

void CModel::SetServerName(const std::optional<QString>& customName)
{
    GetProxy().SetServerName(customName);
    m_subscribers.Notify(&IcModelEvents::OnServerSettingsChanged);
}

void CModel::SetLoggingOptions(bool accessLogging, bool operationalLogging)
{
    GetProxy().SetLoggingOptions(accessLogging, operationalLogging);
    m_subscribers.Notify(&IcModelEvents::OnServerSettingsChanged);
}

void CModel::SetWebInterfaceOptions(bool redirectFromLegacyWebInterface)
{
    GetProxy().SetWebInterfaceOptions(redirectFromLegacyWebInterface);
    m_subscribers.Notify(&IcModelEvents::OnServerSettingsChanged);
}

std::uint32_t CModel::SetRepositoriesRoot(const QString& path, bool adjustPermissions, bool forceCreate)
{
    const std::uint32_t answer = GetProxy().SetRepositoriesRoot(path, adjustPermissions, forceCreate);
    if (answer == kRepositoriesRootSet)
        m_subscribers.Notify(&IcModelEvents::OnServerSettingsChanged);
    return answer;
}

CertificateInfo CModel::GetCertificateInformation()
{
    return GetProxy().GetCertificateInformation();
}

void CModel::CreateSelfSignedCertificate(const CertificateSubjectInfo& subject, std::int32_t days)
{
    GetProxy().CreateSelfSignedCertificate(subject, days);
}

QString CModel::CreateCertificateRequest(const CertificateSubjectInfo& subject)
{
    return GetProxy().CreateCertificateRequest(subject);
}

void CModel::ImportCertificate(const QString& base64Certificate)
{
    GetProxy().ImportCertificate(base64Certificate);
}

std::uint32_t CModel::ValidateCertificate(const QString& base64Certificate)
{
    return GetProxy().ValidateCertificate(base64Certificate);
}

} // namespace quenvolta
