#pragma once

#include "provider/web/apache_installation.h"
#include "provider/web/configuration_text.h"
#include "provider/web/listen_addresses.h"
#include "provider/web/web_folder.h"
#include "provider/web/web_settings.h"

#include <QByteArray>

namespace quenvolta
{

/// httpd's configuration for a server's settings.
class ApacheConfiguration
{
public:
    /// What the web service can't do without, whatever the settings are.
    static QList<ApacheModule> NeededModules();

    ApacheConfiguration(const WebSettings& settings, const ApacheInstallation& installation, const WebFolder& folder);

    /// The text, in UTF-8. ProviderError when a part that the settings ask for isn't installed, and for a value that
    /// can't be written safely.
    QByteArray Compose(const QList<ListenAddress>& addresses) const;

    /// The file of Kerberos keys that the configuration needs; empty when it needs none.
    QString Keytab() const;

private:
    QList<ApacheModule> Modules() const;
    void AddModules(ConfigurationText& text) const;
    void AddServer(ConfigurationText& text, const QList<ListenAddress>& addresses) const;
    void AddSecurity(ConfigurationText& text) const;
    void AddLogs(ConfigurationText& text) const;
    void AddRepositories(ConfigurationText& text) const;
    void AddAuthentication(ConfigurationText& text) const;
    void AddPassword(ConfigurationText& text) const;

    const WebSettings& m_settings;
    const ApacheInstallation& m_installation;
    const WebFolder& m_folder;
};

} // namespace quenvolta
