#include "provider/web/web_service.h"
#include "web_fixture.h"

#include <QFileInfo>

namespace quenvolta
{

namespace
{

class WebSettingsTest : public WebFixture
{
protected:
    /// Every property of the service, as one text.
    QString Everything()
    {
        CallContext context{m_server->Classes(), m_rows, {}, {}};
        const WbemObjectPtr service = m_server->GetObject(kPath, context);
        QStringList names;
        service->GetNames(&names);
        QString all;
        for (const QString& name : std::as_const(names)) {
            Variant value;
            service->Get(name, &value, nullptr);
            all += name + QString::fromStdString(testing::PrintToString(value)) + u'\n';
        }
        return all;
    }

    std::uint32_t SetRoot(const QString& path, bool adjust, bool create)
    {
        const WbemObjectPtr out =
            Call(u"SetRepositoriesRoot"_s,
                 {{u"RepositoriesRoot"_s, path}, {u"AdjustPermissions"_s, adjust}, {u"ForceCreate"_s, create}});
        Variant value;
        out->Get(u"ReturnValue"_s, &value, nullptr);
        return std::get<std::uint32_t>(value);
    }

    static Parameters Authentication(qint32 type, bool basic, bool integrated, bool upn)
    {
        return {{u"AuthType"_s, type},
                {u"WindowsBasic"_s, basic},
                {u"WindowsIntegrated"_s, integrated},
                {u"UseUPNFormat"_s, upn}};
    }
};

TEST_F(WebSettingsTest, WhatIsSetReadsBack)
{
    Call(u"SetAuthenticationOptions"_s, Authentication(1, true, false, true));
    EXPECT_EQ(Number(u"AuthType"_s), 1U);
    EXPECT_EQ(Property(u"UseUPNFormat"_s), Variant(true));
    Call(u"SetAuthenticationOptions"_s, Authentication(0, false, false, false));
    EXPECT_EQ(Number(u"AuthType"_s), 0U);
    EXPECT_EQ(Property(u"AuthWindowsBasic"_s), Variant(false));

    Call(u"SetServerName"_s, {{u"UseCustom"_s, true}, {u"CustomServerName"_s, u"svn_1.example.org"_s}});
    EXPECT_EQ(Property(u"ServerName"_s), Variant(u"svn_1.example.org"_s));
    Call(u"SetServerName"_s, {{u"UseCustom"_s, false}});
    EXPECT_EQ(Property(u"UseCustomServerName"_s), Variant(false));
    EXPECT_NE(Property(u"ServerName"_s), Variant(QString()));

    Call(u"SetNetworkOptions"_s, {{u"UseSecureConnection"_s, false}, {u"Port"_s, PortHolder::Free()}});
    EXPECT_EQ(Property(u"ListenAllIPAddresses"_s), Variant(true));
    Call(u"SetNetworkOptions"_s,
         {{u"UseSecureConnection"_s, false}, {u"Port"_s, m_port}, {u"ListenIPAddressesArray"_s, QStringList{}}});
    EXPECT_EQ(Property(u"ListenAllIPAddresses"_s), Variant(false));
    EXPECT_EQ(Property(u"ListenIPAddressesArray"_s), Variant(QStringList{}));
    EXPECT_TRUE(Refusal(u"StartService"_s).Description().contains(u"empty"_s));

    Call(u"SetWebInterfaceOptions"_s, {{u"RedirectFromLegacyWebInterface"_s, false}});
    EXPECT_EQ(Property(u"RedirectFromLegacyWebInterface"_s), Variant(false));
}

TEST_F(WebSettingsTest, WhatCannotBeIsRefusedAndChangesNothing)
{
    const QString before = Everything();
    const QByteArray configuration = Read(Folder().Configuration());
    const auto refused = [&](const QString& method, const Parameters& in, HRESULT code = WBEM_E_INVALID_PARAMETER) {
        const ProviderError error = Refusal(method, in);
        EXPECT_EQ(error.Code(), code) << error.what();
    };
    refused(u"SetNetworkOptions"_s, Network(false, 0));
    refused(u"SetNetworkOptions"_s, Network(false, 65536));
    Parameters network = Network(false, m_port);
    network.last().second = QStringList{u"127.0.0.1"_s, u"not an address"_s};
    refused(u"SetNetworkOptions"_s, network);
    network.last().second = QStringList{u"192.0.2.1"_s}; // an address of no computer
    refused(u"SetNetworkOptions"_s, network, WBEM_E_FAILED);
    for (const QString& name : {u""_s, u"two words"_s, u"srv/x"_s, u"srv:80"_s, u"a\nListen 1"_s, QString(254, u'a')})
        refused(u"SetServerName"_s, {{u"UseCustom"_s, true}, {u"CustomServerName"_s, name}});
    refused(u"SetAuthenticationOptions"_s, Authentication(1, false, false, false));
    refused(u"SetAuthenticationOptions"_s, Authentication(2, true, true, false));
    refused(u"SetAuthenticationOptions"_s, Authentication(1, true, true, false), WBEM_E_FAILED); // no keytab
    for (const QString& root : {u""_s, u"relative/folder"_s, u"/srv/${HOME}"_s, u"/srv/a\nb"_s})
        refused(u"SetRepositoriesRoot"_s,
                {{u"RepositoriesRoot"_s, root}, {u"AdjustPermissions"_s, true}, {u"ForceCreate"_s, true}});
    refused(u"SetRepositoriesRoot"_s, {{u"RepositoriesRoot"_s, DataPath() + u"/registry.db"_s},
                                       {u"AdjustPermissions"_s, true},
                                       {u"ForceCreate"_s, true}});
    EXPECT_EQ(Everything(), before);
    EXPECT_EQ(Read(Folder().Configuration()), configuration);
}

TEST_F(WebSettingsTest, TheFolderOfTheRepositoriesIsMadeOnlyWhenAsked)
{
    const QString root = Scratch(u"deep/er/repositories"_s);
    const Variant before = Property(u"RepositoriesRoot"_s);
    EXPECT_EQ(SetRoot(root, true, false), 1U);
    EXPECT_FALSE(QDir(Scratch(u"deep"_s)).exists());
    EXPECT_EQ(Property(u"RepositoriesRoot"_s), before);
    EXPECT_EQ(SetRoot(root + u"/./"_s, false, true), 0U);
    EXPECT_EQ(Property(u"RepositoriesRoot"_s), Variant(root));
    EXPECT_EQ(Property(u"AdjustRepositoriesRootPermissions"_s), Variant(false));
    RepositoryStore(root).Create(u"one"_s);
    EXPECT_EQ(SetRoot(root, true, true), 0U) << "an existing folder is taken as it is";
    EXPECT_TRUE(RepositoryStore(root).Exists(u"one"_s));
}

// An administrator's folders, which root made where only root can, and the account of the service.
TEST_F(WebSettingsTest, OnlyFoldersOfRepositoriesAreHandedOver)
{
    const QString mine = m_temporary.path() + u"/of-repositories"_s;
    const QString mixed = m_temporary.path() + u"/mixed"_s;
    const QString secret = m_temporary.path() + u"/secret"_s;
    {
        const ServerAccount::Elevation administrator;
        ASSERT_TRUE(QDir().mkpath(mine) && QDir().mkpath(mixed + u"/documents"_s));
        ASSERT_TRUE(Run(u"svnadmin"_s, {u"create"_s, mine + u"/project"_s}).succeeded);
        Write(secret, "secret");
        ASSERT_TRUE(QFile::link(secret, mine + u"/project/conf/link"_s));
    }
    const uint owner = QFileInfo(secret).ownerId();
    EXPECT_EQ(SetRoot(mine, true, false), 0U);
    EXPECT_EQ(QFileInfo(mine + u"/project/db/current"_s).ownerId(), ::geteuid());
    EXPECT_EQ(QFileInfo(secret).ownerId(), owner) << "a link leads nowhere";
    EXPECT_EQ(RepositoryStore(mine).CreateFolders(u"project"_s, {u"/trunk"_s}, {}), 1U);
    if (owner != ::geteuid()) {
        EXPECT_EQ(Refusal(u"SetRepositoriesRoot"_s,
                          {{u"RepositoriesRoot"_s, mixed}, {u"AdjustPermissions"_s, true}, {u"ForceCreate"_s, false}})
                      .Code(),
                  WBEM_E_ACCESS_DENIED);
        EXPECT_EQ(QFileInfo(mixed).ownerId(), owner);
        EXPECT_EQ(Property(u"RepositoriesRoot"_s), Variant(mine));
        // Root's provider may use the ports that are root's.
        m_port = 1;
        while (ListenAddress(u"127.0.0.1"_s, ++m_port).Probe() != 0)
            continue;
        ASSERT_LT(m_port, 1024);
        LetAliceIn("r");
        Call(u"SetNetworkOptions"_s, Network(false, m_port));
        Call(u"StartService"_s);
        EXPECT_TRUE(Svn({u"list"_s, Url(u"project"_s)}).succeeded);
    }
}

TEST_F(WebSettingsTest, WithoutApacheSettingsAreKeptAndTheStartSaysWhatIsMissing)
{
    WebService service(*m_data, [] { return ApacheInstallation(QString(), QString()); });
    WebSettings settings = WebSettings::Read(m_data->Settings());
    bool written = false;
    service.Change(settings, WebService::Ports::Trusted, [&written] { written = true; });
    EXPECT_TRUE(written);
    try {
        service.Start({}, false);
        ADD_FAILURE() << "it started";
    } catch (const ProviderError& error) {
        EXPECT_TRUE(error.Description().contains(u"apache2-bin"_s));
    }
    EXPECT_EQ(service.ReadStatus().state, ServiceState::Stopped);
}

} // namespace

} // namespace quenvolta
