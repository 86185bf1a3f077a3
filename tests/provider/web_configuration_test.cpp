#include "provider/provider_error.h"
#include "provider/web/apache_command.h"
#include "provider/web/apache_configuration.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <net/if.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

template <typename Action>
HRESULT CodeOf(const Action& action)
{
    try {
        action();
    } catch (const ProviderError& error) {
        return error.Code();
    }
    return S_OK;
}

WebSettings SettingsOn(const QStringList& addresses)
{
    WebSettings settings;
    settings.port = 8080;
    settings.addresses = addresses;
    return settings;
}

QStringList TextsOf(const QList<ListenAddress>& addresses)
{
    QStringList texts;
    for (const ListenAddress& each : addresses)
        texts.append(each.Text());
    return texts;
}

TEST(WebConfigurationTest, NoValueBreaksOutOfItsArgument)
{
    const std::pair<QString, QString> table[] = {
        {u"/srv/my repositories"_s, u"\"/srv/my repositories\""_s},
        {u"/srv/a\"b"_s, u"\"/srv/a\\\"b\""_s},
        {u"/srv/end\\"_s, u"\"/srv/end\\\\\""_s},
        {u"/srv/\\\""_s, u"\"/srv/\\\\\\\"\""_s},
        {u"/srv/%{x}$1#<Location>'"_s, u"\"/srv/%{x}$1#<Location>'\""_s},
        {u"/srv/\u00e4\u4e2d"_s, u"\"/srv/\u00e4\u4e2d\""_s},
        {QString(), u"\"\""_s},
    };
    for (const auto& [value, quoted] : table)
        EXPECT_EQ(ConfigurationText::Quote(value), quoted) << value.toStdString();
    for (const QString& refused : {u"/srv/a\nUser root"_s, u"/srv/a\rb"_s, u"/srv/${HOME}"_s, u"/srv/\u0085"_s,
                                   u"/srv/"_s + QChar(u'\0') + u"x"_s})
        EXPECT_EQ(CodeOf([&] { ConfigurationText::Quote(refused); }), WBEM_E_INVALID_PARAMETER);
}

TEST(WebConfigurationTest, AddressesAreCheckedAndThoseThatOthersCoverLeftOut)
{
    EXPECT_EQ(TextsOf(ListenAddressesOf(SettingsOn({u"127.0.0.1"_s, u" 127.0.0.1 "_s, u"10.1.2.3"_s}))),
              QStringList({u"127.0.0.1:8080"_s, u"10.1.2.3:8080"_s}));
    EXPECT_EQ(TextsOf(ListenAddressesOf(SettingsOn({u"2001:DB8::0:1"_s, u"2001:db8::1"_s}))),
              QStringList({u"[2001:db8::1]:8080"_s}));
    // An address of one link counts with its interface, which has a name and a number.
    EXPECT_EQ(TextsOf(ListenAddressesOf(SettingsOn(
                  {u"FE80::0:1%lo"_s, u"fe80::1%"_s + QString::number(::if_nametoindex("lo")), u"fe80::1%gone"_s}))),
              QStringList({u"[fe80::1%lo]:8080"_s, u"[fe80::1%gone]:8080"_s}));
    EXPECT_NE(ListenAddress(u"fe80::1%gone"_s, 8080).Probe(), 0);
    EXPECT_EQ(TextsOf(ListenAddressesOf(SettingsOn({u"127.0.0.1"_s, u"0.0.0.0"_s}))), QStringList({u"0.0.0.0:8080"_s}));
    EXPECT_EQ(TextsOf(ListenAddressesOf(SettingsOn({u"127.0.0.1"_s, u"::"_s}))), QStringList({u"8080"_s}));
    for (const QString& host :
         {u""_s, u"localhost"_s, u"1.2.3"_s, u"1.2.3.4:80"_s, u"[::1]"_s, u"::1\nUser root"_s, u"1.2.3.4\u0661"_s,
          u"fe80::1%"_s, u"fe80::1%a%b"_s, u"fe80::1%a b"_s, u"fe80::1%a]:80"_s, u"fe80::1%é"_s, u"2001:db8::1%lo"_s,
          u"127.0.0.1%lo"_s, u"fe80::1%0123456789abcdef"_s})
        EXPECT_EQ(CodeOf([&] { ListenAddressesOf(SettingsOn({host})); }), WBEM_E_INVALID_PARAMETER)
            << host.toStdString();
    for (const int port : {0, -1, 65536})
        EXPECT_EQ(CodeOf([&] { ListenAddress(u"127.0.0.1"_s, port); }), WBEM_E_INVALID_PARAMETER) << port;
    const QList<ListenAddress> written{{u"::1"_s, 1}, {QString(), 2}, {u"fe80::1%lo"_s, 3}};
    EXPECT_EQ(FromLines(ToLines(written) + "broken\n::x 3\n"), written);
}

TEST(WebConfigurationTest, ApacheTakesEveryCombinationOfSettings)
{
    const QTemporaryDir folder;
    const WebFolder web(folder.path());
    ASSERT_NO_THROW(web.Make());
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"certificates"_s));
    for (const QString& path : {web.Certificate(), web.CertificateKey()}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("not looked at");
    }
    const ApacheInstallation apache = ApacheInstallation::Find();
    for (unsigned bits = 0; bits < 128; ++bits) {
        WebSettings settings = SettingsOn({u"127.0.0.1"_s});
        settings.repositoriesRoot = u"/srv/svn"_s;
        settings.serverName = (bits & 64) != 0 ? u"\u00e4 server_1"_s : u"srv1.example.org"_s;
        settings.pamService = u"quenvolta"_s;
        settings.systemAccounts = (bits & 3) != 0;
        settings.basic = (bits & 1) != 0;
        settings.integrated = (bits & 2) != 0;
        settings.upnFormat = (bits & 4) != 0;
        settings.secure = (bits & 8) != 0;
        settings.accessLog = settings.operationalLog = (bits & 16) != 0;
        settings.redirectLegacy = (bits & 32) != 0;
        const QByteArray text = ApacheConfiguration(settings, apache, web).Compose(ListenAddressesOf(settings));
        QFile file(web.Configuration());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        const ApacheCommand::Outcome test =
            ApacheCommand(apache.Program(), {u"-t"_s, u"-f"_s, web.Configuration()}).Run();
        ASSERT_TRUE(test.succeeded) << test.output.toStdString() << '\n' << text.toStdString();
    }
}

TEST(WebConfigurationTest, TellsWhichPartIsMissing)
{
    const auto missing = [](const ApacheInstallation& installation) {
        try {
            installation.Require(ApacheConfiguration::NeededModules());
        } catch (const ProviderError& error) {
            return error.Description();
        }
        return QString();
    };
    EXPECT_TRUE(missing({QString(), QString()}).contains(u"apache2-bin"_s));
    EXPECT_EQ(missing(ApacheInstallation::Find()), QString());
    const QTemporaryDir modules;
    for (const ApacheModule& each : ApacheConfiguration::NeededModules()) {
        const QString name = QLatin1StringView(each.identifier);
        if (!name.endsWith("svn"_L1)) {
            ASSERT_TRUE(QFile(modules.filePath(u"mod_%1.so"_s.arg(name))).open(QIODevice::WriteOnly));
        }
    }
    const QString text = missing({ApacheInstallation::Find().Program(), modules.path()});
    EXPECT_TRUE(text.contains(u"mod_dav_svn"_s) && text.contains(u"libapache2-mod-svn"_s)) << text.toStdString();
}

} // namespace

} // namespace quenvolta
