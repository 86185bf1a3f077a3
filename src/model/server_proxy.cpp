#include "model/server_proxy.h"

#include "foundation/com_exception.h"
#include "foundation/server_not_installed_exception.h"
#include "foundation/simple_exception.h"
#include "platform/wbem/proxy_blanket.h"

#include <algorithm>
#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// The newest server that the console manages.
constexpr int kNewestMajor = 3;
constexpr int kNewestMinor = 3;

// What a computer without the server answers.
constexpr std::array kNotInstalledCodes{WBEM_E_INVALID_NAMESPACE, WBEM_E_INVALID_CLASS, WBEM_E_NOT_FOUND};

QString RootPath(const QString& computerName)
{
    return computerName.isEmpty() ? u"\\\\.\\root"_s : Format(u"\\\\%s\\root", computerName);
}

} // namespace

CServerProxy::CServerProxy(const WbemLocatorFactory& locatorFactory, const QString& computerName)
try : m_locatorFactory(locatorFactory), m_computerName(computerName), m_rootPath(RootPath(computerName)),
    m_connection(WMIConnection::Connect(locatorFactory, m_rootPath + "\\Quenvolta"_L1, RPC_C_IMP_LEVEL_DELEGATE)),
    m_classes(m_connection),
    m_marshaller(m_classes.user, m_classes.group, m_classes.everyone, m_classes.windowsAccount,
                 m_classes.permissionEntry) {
    const QString versionText = GetVersionObject().GetString(u"Version"_s);
    const Version version = ParseVersion(versionText);
    if (IsAtLeast(version, MakeVersion(kNewestMajor, kNewestMinor + 1))) {
        throw SimpleException(u"You are connecting to Quenvolta Server %s. Quenvolta Server Manager %s can manage "
                              u"Quenvolta Server %d.%d or older.",
                              versionText, QString::fromLatin1(QUENVOLTA_VERSION), kNewestMajor, kNewestMinor);
    }
    m_capabilities = CapabilitiesOf(version);
    m_featureLevel = FeatureLevelOf(version);
} catch (const ComException& failure) {
    if (std::find(kNotInstalledCodes.begin(), kNotInstalledCodes.end(), failure.Code()) != kNotInstalledCodes.end())
        throw ServerNotInstalledException(computerName);
    throw;
}

WMIObject CServerProxy::GetVersionObject()
{
    WMIObject object = m_connection.GetObject(u"Quenvolta_VersionInfo=@"_s, true);
    if (object.IsEmpty())
        throw ComException(WBEM_E_NOT_FOUND);
    return object;
}

ServerVersionInfo CServerProxy::GetServerVersionInfo()
{
    const WMIObject object = GetVersionObject();
    return {object.GetString(u"Version"_s), object.GetString(u"SubversionVersion"_s),
            object.GetString(u"ApacheVersion"_s)};
}

} // namespace quenvolta
