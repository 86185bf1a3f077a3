#include "provider/server_settings_reader.h"

#include "provider/provider_error.h"
#include "provider/provider_texts.h"

#include <QDir>
#include <QSysInfo>
#include <QUrl>

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kHttpPort = 80;
constexpr int kHttpsPort = 443;

} // namespace

ServerSettingsReader::ServerSettingsReader(Registry& registry)
    : m_values(registry, RegistryAccessor::kServerKey.toString())
{
}

bool ServerSettingsReader::UsesCustomName() const
{
    return !m_values.GetServerName().isEmpty();
}

QString ServerSettingsReader::ServerName() const
{
    const QString custom = m_values.GetServerName();
    return custom.isEmpty() ? QSysInfo::machineHostName() : custom;
}

QString ServerSettingsReader::Origin() const
{
    const bool secure = m_values.GetUseSsl();
    const int port = m_values.GetServerPort(secure);
    QString origin = (secure ? "https://"_L1 : "http://"_L1) + ServerName();
    if (port != (secure ? kHttpsPort : kHttpPort))
        origin += u':' + QString::number(port);
    return origin;
}

QString ServerSettingsReader::RepositoriesUrl() const
{
    return Origin() + "/svn/"_L1;
}

QString ServerSettingsReader::RepositoriesRoot() const
{
    QString root = m_values.GetRepositoriesRoot();
    if (!QDir::isAbsolutePath(root))
        throw ProviderError(WBEM_E_FAILED, replies::kNoRepositoriesRoot.arg(root));
    return root;
}

QString EncodeForUrl(const QString& path)
{
    // Most names need nothing; a list has thousands of them.
    const auto isPlain = [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'-' && c <= u'9') || c == u'_';
    };
    if (std::all_of(path.cbegin(), path.cend(), isPlain))
        return path;
    return QString::fromLatin1(QUrl::toPercentEncoding(path, QByteArrayLiteral("/!$&'()*+,=:@")));
}

} // namespace quenvolta
