#include "model/model.h"

#include "model/server_proxy.h"

#include <utility>

namespace quenvolta
{

CModel::CModel(WbemLocatorFactory locatorFactory, IcPreferences& preferences, UpdateService updateService)
    : m_locatorFactory(std::move(locatorFactory))
    , m_preferences(preferences)
    , m_updateService(std::move(updateService))
{
}

CModel::~CModel() = default;

void CModel::Subscribe(IcModelEvents& subscriber)
{
    m_subscribers.Add(subscriber);
}

void CModel::Unsubscribe(IcModelEvents& subscriber)
{
    m_subscribers.Remove(subscriber);
}

void CModel::Connect(const QString& computerName)
{
    m_proxy = std::make_unique<CServerProxy>(m_locatorFactory, computerName);
    CheckForUpdates();
    if (!computerName.isEmpty())
        m_preferences.AddRecentServer(computerName, CurrentFileTime());
}

void CModel::SetComputer(const QString& computerName, bool offline)
{
    if (offline)
        Disconnect();
    else
        Connect(computerName);
    m_computerName = computerName;
    m_subscribers.Notify(&IcModelEvents::OnComputerChanged);
}

void CModel::Disconnect()
{
    m_proxy.reset();
}

CServerProxy& CModel::GetProxy()
{
    if (!m_proxy)
        Connect(m_computerName);
    return *m_proxy;
}

bool CModel::HasCapability(std::uint32_t mask)
{
    return GetProxy().HasCapability(mask);
}

std::uint32_t CModel::GetFeatureLevel()
{
    return GetProxy().FeatureLevel();
}

} // namespace quenvolta
