#include "foundation/registry_accessor.h"
#include "permission_model.h"
#include "provider/accounts/account_store.h"
#include "web_fixture.h"

#include <QUrl>

namespace quenvolta
{

namespace
{

/// Accounts of a system that tests know: a user with signs that rules can't hold, and a group.
class KnownSystemAccounts final : public SystemAccounts
{
public:
    std::optional<QString> UserName(std::uint32_t uid) const override
    {
        const QHash<std::uint32_t, QString> names{{1000, u"odd, = [name]"_s}, {1001, u"CORP\\bob"_s}, {1002, u"eve"_s}};
        const auto found = names.constFind(uid);
        return found == names.cend() ? std::nullopt : std::optional(*found);
    }
    QHash<std::uint32_t, QStringList> GroupMembers(const QList<std::uint32_t>&) const override
    {
        return {{100, {u"odd, = [name]"_s, u"ann"_s, u"CORP\\bob"_s}}, {101, {u"ann"_s, u"Петр"_s}}};
    }
};

/// A true httpd with the configuration that the provider writes, and the stock client in front of it.
class WebPermissionsTest : public WebFixture
{
protected:
    void SetUp() override
    {
        WebFixture::SetUp();
        m_store.emplace(*m_data, AccountStore::Options{PasswordHash::kLowestCost, m_systemAccounts});
        m_store->Repair();
        for (const QString& repository : permissioncases::Repositories()) {
            QStringList folders;
            for (const auto& [of, path] : permissioncases::Folders()) {
                if (of == repository)
                    folders.append(path);
            }
            Repositories().Create(repository);
            if (!folders.isEmpty())
                Repositories().CreateFolders(repository, folders, {u"m"_s, {}});
        }
    }

    QByteArray Hash() const { return m_store->HashPassword({}, u"secret"_s); }

    QString Address(const permissioncases::Case& each) const
    {
        const auto encoded = [](const QString& text) {
            return QString::fromLatin1(QUrl::toPercentEncoding(text, "/"));
        };
        return Url(encoded(each.repository)) + (each.path == u"/"_s ? QString() : encoded(each.path));
    }

    // One run of the stock client in the name of a case's user.
    std::unique_ptr<QProcess> Start(const permissioncases::Case& each, const QStringList& arguments) const
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::MergedChannels);
        process->start(u"svn"_s,
                       QStringList{u"--non-interactive"_s, u"--no-auth-cache"_s, u"--config-dir"_s,
                                   Scratch(u"config"_s), u"--username"_s, each.user, u"--password"_s, u"secret"_s} +
                           arguments);
        return process;
    }

    // True when the client was let in, false when it was refused; whatever else happens fails the test.
    static bool WasLetIn(QProcess& process, const std::string& what)
    {
        EXPECT_TRUE(process.waitForFinished(60'000)) << what;
        const QString output = QString::fromUtf8(process.readAll());
        if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
            return true;
        EXPECT_TRUE(output.contains("E175013"_L1)) << what << ": " << output.toStdString();
        return false;
    }

    void ExpectCases(const QList<permissioncases::Case>& cases) const
    {
        int number = 0;
        for (const permissioncases::Case& each : cases) {
            const std::string what = (each.user + u" in "_s + each.repository + u':' + each.path).toStdString();
            const QString folder = Address(each);
            const auto read = Start(each, {u"list"_s, folder + u'@'});
            const auto write = Start(each, {u"mkdir"_s, u"-qm"_s, u"m"_s, folder + u"/made%1@"_s.arg(++number)});
            EXPECT_EQ(WasLetIn(*read, what), each.level >= 1) << what << " reads";
            EXPECT_EQ(WasLetIn(*write, what), each.level == 2) << what << " writes";
        }
    }

    std::shared_ptr<const SystemAccounts> m_systemAccounts = std::make_shared<KnownSystemAccounts>();
    std::optional<AccountStore> m_store;
};

TEST_F(WebPermissionsTest, TheStockClientGetsWhatTheEditorShows)
{
    const AccountModel model = permissioncases::Model(Hash());
    m_store->Change(CancelCheck(), [&model](AccountModel& accounts) { accounts = model; });
    Call(u"StartService"_s);
    ExpectCases(permissioncases::Cases());
}

TEST_F(WebPermissionsTest, TheSystemsAccountsAndTheServersOwnList)
{
    Call(u"StartService"_s);
    const auto system = [](const char16_t* sid) {
        return Principal{PrincipalKind::SystemAccount, QString::fromUtf16(sid)};
    };
    m_store->Change(CancelCheck(), [&](AccountModel& accounts) {
        accounts.AddUser(u"eve"_s, Hash());
        accounts.SetPermissions({}, {{{}, Access::Read}, {system(u"S-1-22-2-100"), Access::ReadWrite}});
        accounts.SetPermissions({u"closed"_s, u"/"_s}, {{system(u"S-1-22-1-1000"), Access::ReadWrite},
                                                        {system(u"S-1-22-2-100"), Access::None},
                                                        {{PrincipalKind::User, u"eve"_s}, Access::ReadWrite},
                                                        {{}, Access::None}});
        accounts.SetPermissions({u"own"_s, u"/a"_s}, {{system(u"S-1-22-1-1001"), Access::None},
                                                      {system(u"S-1-22-2-101"), Access::Read},
                                                      {system(u"S-1-22-2-777"), Access::ReadWrite}});
    });
    // The rules for the system's accounts; their passwords come from a file, for PAM is the computer's own matter.
    RegistryAccessor(m_data->Settings(), RegistryAccessor::kServerKey.toString()).SetUseWindowsAuth(true);
    m_store->RenewRules();
    QByteArray passwords;
    for (const QString& user : {u"odd, = [name]"_s, u"CORP\\bob"_s, u"ann"_s, u"eve"_s, u"Петр"_s, u"gus"_s})
        passwords += user.toUtf8() + ':' + Hash() + '\n';
    Write(Folder().Users(), passwords);
    const QString root = u"/"_s;
    const QString odd = u"odd, = [name]"_s;
    const QString bob = u"CORP\\bob"_s;
    ExpectCases({{odd, u"open"_s, root, 2},
                 {bob, u"open"_s, root, 2},
                 {u"gus"_s, u"open"_s, root, 1},
                 {odd, u"closed"_s, root, 2},
                 {bob, u"closed"_s, root, 0},
                 {u"gus"_s, u"closed"_s, root, 0},
                 {u"eve"_s, u"closed"_s, root, 0}, // the server's user of that name is somebody else
                 {u"ann"_s, u"own"_s, root, 2},
                 {u"Петр"_s, u"own"_s, root, 1},
                 {bob, u"own"_s, u"/a"_s, 0},
                 {u"ann"_s, u"own"_s, u"/a/b"_s, 2},
                 {u"Петр"_s, u"own"_s, u"/a/b"_s, 1},
                 {u"eve"_s, u"own"_s, u"/a"_s, 1}});
}

} // namespace

} // namespace quenvolta
