#include "namespace_fixture.h"
#include "provider/accounts/account_store.h"

#include <QFile>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

class AccountsClassesTest : public NamespaceFixture
{
protected:
    HRESULT CreateUser(const QString& name)
    {
        return CodeOf(u"Quenvolta_User"_s, u"Create"_s, {{u"Name"_s, name}, {u"Password"_s, u"secret"_s}});
    }
    HRESULT CreateGroup(const QString& name, const QStringList& members)
    {
        return CodeOf(u"Quenvolta_Group"_s, u"Create"_s, {{u"Name"_s, name}, {u"Members"_s, members}});
    }
    HRESULT CreateRepository(const QString& name)
    {
        return CodeOf(u"Quenvolta_Repository"_s, u"Create"_s, {{u"Name"_s, name}});
    }

    WbemObjectPtr Account(const QString& className, const QString& name) const
    {
        InstanceRow row(server->Classes().Find(className));
        row.Set(className == "Quenvolta_WindowsAccount"_L1 ? u"SID"_s : u"Name"_s, name);
        return row.ToObject();
    }
    WbemObjectPtr Entry(const WbemObjectPtr& account, std::uint32_t level) const
    {
        InstanceRow row(server->Classes().Find(u"Quenvolta_PermissionEntry"_s));
        row.Set(u"Account", account).Set(u"AccessLevel", level);
        return row.ToObject();
    }
    HRESULT SetSecurity(const QString& path, const QList<WbemObjectPtr>& entries, const QString& repository = u"r"_s)
    {
        return CodeOf(u"Quenvolta_Repository.Name=\"%1\""_s.arg(repository), u"SetSecurity"_s,
                      {{u"Path"_s, path}, {u"Permissions"_s, entries}});
    }

    /// "Class name level" of each.
    QStringList Show(const QList<WbemObjectPtr>& entries) const
    {
        QStringList shown;
        for (const WbemObjectPtr& entry : entries) {
            Variant account;
            Variant level;
            entry->Get(u"Account"_s, &account, nullptr);
            entry->Get(u"AccessLevel"_s, &level, nullptr);
            const WbemObjectPtr object = std::get<WbemObjectPtr>(account);
            const QString className = std::dynamic_pointer_cast<WbemObject>(object)->Definition()->name;
            shown.append(className.mid(10) + u' ' +
                         Text(object, className.endsWith("WindowsAccount"_L1) ? u"SID"_s : u"Name"_s) + u' ' +
                         QString::number(std::get<std::uint32_t>(level)));
        }
        return shown;
    }
    QStringList Security(const QString& path, const QString& repository = u"r"_s)
    {
        rows.elements.clear();
        Exec(u"Quenvolta_Repository.Name=\"%1\""_s.arg(repository), u"GetSecurity"_s, {{u"Path"_s, path}});
        return Show(rows.elements.value(u"Permissions"_s));
    }

    bool InheritsOnly(const QString& objectPath)
    {
        Variant value;
        GetObject(objectPath)->Get(u"InheritedOnlyPermissions"_s, &value, nullptr);
        return std::get<bool>(value);
    }

    QByteArray Rules() const
    {
        QFile file(data.Path() + "/authz"_L1);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

const QString kAnn = u"Quenvolta_User.Name=\"ann\""_s;
const QString kDevs = u"Quenvolta_Group.Name=\"devs\""_s;

} // namespace

TEST_F(AccountsClassesTest, UsersAndGroupsComeAndGo)
{
    EXPECT_EQ(CreateUser(u"bob"_s), S_OK);
    EXPECT_EQ(CreateUser(u"ann"_s), S_OK);
    EXPECT_EQ(CreateUser(u"ann"_s), WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(CreateUser(u"a:b"_s), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(Names(u"Quenvolta_User"_s), (QStringList{u"ann"_s, u"bob"_s}));
    EXPECT_EQ(Text(GetObject(kAnn), u"Name"_s), u"ann"_s);
    EXPECT_THROW(GetObject(u"Quenvolta_User.Name=\"Ann\""_s), ProviderError);

    const QByteArray before = AccountStore(data).Read()->PasswordHash(u"ann"_s);
    EXPECT_EQ(CodeOf(kAnn, u"SetPassword"_s, {{u"Password"_s, u"other"_s}}), S_OK);
    const QByteArray after = AccountStore(data).Read()->PasswordHash(u"ann"_s);
    EXPECT_TRUE(PasswordHash::Matches(u"secret"_s, before) && PasswordHash::Matches(u"other"_s, after));
    EXPECT_EQ(CodeOf(u"Quenvolta_User.Name=\"eve\""_s, u"SetPassword"_s, {{u"Password"_s, u"x"_s}}), WBEM_E_NOT_FOUND);

    EXPECT_EQ(CreateGroup(u"devs"_s, {kAnn}), S_OK);
    EXPECT_EQ(CreateGroup(u"devs"_s, {}), WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(CreateGroup(u"all"_s, {kDevs, u"Quenvolta_User.Name=\"bob\""_s}), S_OK);
    EXPECT_EQ(CreateGroup(u"x"_s, {u"Quenvolta_User.Name=\"eve\""_s}), WBEM_E_NOT_FOUND);
    for (const QString& path : {u"Quenvolta_Repository.Name=\"r\""_s, u"ann"_s, u"Quenvolta_User"_s, u"\"\\"_s})
        EXPECT_EQ(CreateGroup(u"x"_s, {path}), WBEM_E_INVALID_PARAMETER) << path.toStdString();
    EXPECT_EQ(CodeOf(kDevs, u"SetMembers"_s, {{u"Members"_s, QStringList{u"Quenvolta_Group.Name=\"all\""_s}}}),
              MakeHResult(0x80070423));
    rows.elements.clear();
    Exec(u"Quenvolta_Group.Name=\"all\""_s, u"GetMembers"_s, {});
    QStringList members;
    for (const WbemObjectPtr& member : rows.elements.value(u"Members"_s))
        members.append(RelativePathOf(*std::dynamic_pointer_cast<WbemObject>(member)));
    EXPECT_EQ(members, (QStringList{kDevs, u"Quenvolta_User.Name=\"bob\""_s}));

    EXPECT_EQ(CodeOf(u"Quenvolta_Group"_s, u"Delete"_s, {{u"Name"_s, u"devs"_s}}), S_OK);
    EXPECT_EQ(CodeOf(u"Quenvolta_Group"_s, u"Delete"_s, {{u"Name"_s, u"devs"_s}}), WBEM_E_NOT_FOUND);
    EXPECT_EQ(CodeOf(u"Quenvolta_User"_s, u"Delete"_s, {{u"Name"_s, u"bob"_s}}), S_OK);
    EXPECT_EQ(CodeOf(u"Quenvolta_User"_s, u"Delete"_s, {{u"Name"_s, u"bob"_s}}), WBEM_E_NOT_FOUND);
    EXPECT_EQ(Names(u"Quenvolta_Group"_s), QStringList{u"all"_s});

    // A request that comes again after its answer was lost.
    repeated = true;
    EXPECT_EQ(CodeOf(u"Quenvolta_User"_s, u"Delete"_s, {{u"Name"_s, u"bob"_s}}), S_OK);
    EXPECT_EQ(CreateUser(u"ann"_s), WBEM_E_ALREADY_EXISTS); // somebody else's: the password differs
    EXPECT_EQ(CodeOf(u"Quenvolta_User"_s, u"Create"_s, {{u"Name"_s, u"ann"_s}, {u"Password"_s, u"other"_s}}), S_OK);
    EXPECT_EQ(CreateGroup(u"all"_s, {}), S_OK);
    EXPECT_EQ(CreateGroup(u"all"_s, {kAnn}), WBEM_E_ALREADY_EXISTS);
}

TEST_F(AccountsClassesTest, PermissionsAreSetReadAndFollowTheirRepository)
{
    CreateUser(u"ann"_s);
    CreateGroup(u"devs"_s, {kAnn});
    ASSERT_EQ(CreateRepository(u"r"_s), S_OK);
    ASSERT_EQ(CodeOf(u"Quenvolta_Repository.Name=\"r\""_s, u"CreateFolders"_s,
                     {{u"Folders"_s, QStringList{u"/a"_s, u"/a/b"_s, u"/c"_s}}, {u"Message"_s, u"m"_s}}),
              S_OK);
    const WbemObjectPtr ann = Account(u"Quenvolta_User"_s, u"ann"_s);
    const QList<WbemObjectPtr> all{Entry(Account(u"Quenvolta_Everyone"_s, u"Everyone"_s), 1),
                                   Entry(Account(u"Quenvolta_WindowsAccount"_s, u"S-1-22-1-0"_s), 2), Entry(ann, 0),
                                   Entry(Account(u"Quenvolta_Group"_s, u"devs"_s), 2)};
    const QStringList shown{u"Everyone Everyone 1"_s, u"WindowsAccount S-1-22-1-0 2"_s, u"User ann 0"_s,
                            u"Group devs 2"_s};
    EXPECT_EQ(SetSecurity(u"/a"_s, all), S_OK);
    EXPECT_EQ(Security(u"/a"_s), shown);
    EXPECT_EQ(Security(u"/"_s), QStringList());
    EXPECT_EQ(SetSecurity(u"/c"_s, {Entry(ann, 2)}), S_OK);
    EXPECT_FALSE(InheritsOnly(u"Quenvolta_RepositoryEntry.RepositoryName=\"r\",Path=\"/a\""_s));
    EXPECT_TRUE(InheritsOnly(u"Quenvolta_RepositoryEntry.RepositoryName=\"r\",Path=\"/a/b\""_s));
    EXPECT_TRUE(InheritsOnly(u"Quenvolta_Repository.Name=\"r\""_s));
    EXPECT_EQ(SetSecurity(u"/"_s, {Entry(ann, 1)}), S_OK);
    EXPECT_FALSE(InheritsOnly(u"Quenvolta_Repository.Name=\"r\""_s));

    EXPECT_EQ(SetSecurity(u"/gone"_s, all), WBEM_E_NOT_FOUND);
    EXPECT_EQ(SetSecurity(u"/gone"_s, {}), S_OK); // what is no more may be cleared
    EXPECT_EQ(SetSecurity(u"/"_s, all, u"gone"_s), WBEM_E_NOT_FOUND);
    EXPECT_EQ(SetSecurity(u"/a"_s, {Entry(ann, 3)}), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(SetSecurity(u"/a"_s, {Entry(nullptr, 1)}), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(SetSecurity(u"/a"_s, {ann}), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(SetSecurity(u"/a"_s, {Entry(Account(u"Quenvolta_User"_s, u"eve"_s), 1)}), WBEM_E_NOT_FOUND);
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository.Name=\"r\""_s, u"SetSecurity"_s, {{u"Path"_s, u"/a"_s}}),
              WBEM_E_INVALID_METHOD_PARAMETERS); // nothing is not an empty list
    EXPECT_EQ(Security(u"/a"_s), shown);

    ASSERT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Rename"_s, {{u"OldName"_s, u"r"_s}, {u"NewName"_s, u"s"_s}}), S_OK);
    EXPECT_EQ(Security(u"/a"_s, u"s"_s), shown);
    ASSERT_EQ(CreateRepository(u"r"_s), S_OK);
    EXPECT_EQ(SetSecurity(u"/"_s, {Entry(ann, 2)}), S_OK);
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Rename"_s, {{u"OldName"_s, u"s"_s}, {u"NewName"_s, u"r"_s}}),
              WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(Security(u"/"_s), QStringList{u"User ann 2"_s}); // not the other's
    EXPECT_EQ(Security(u"/a"_s, u"s"_s), shown);
    ASSERT_EQ(CodeOf(u"Quenvolta_Repository.Name=\"s\""_s, u"DeleteFolders"_s,
                     {{u"Folders"_s, QStringList{u"/a"_s}}, {u"Message"_s, u"m"_s}}),
              S_OK);
    EXPECT_TRUE(Rules().contains("[s:/c]") && !Rules().contains("[s:/a]"));
    ASSERT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"Delete"_s, {{u"Name"_s, u"s"_s}}), S_OK);
    EXPECT_FALSE(Rules().contains("[s:"));

    // What something else took away comes back without the permissions that it had.
    ASSERT_TRUE(QDir(data.Path() + "/repositories/r"_L1).removeRecursively());
    ASSERT_EQ(CreateRepository(u"r"_s), S_OK);
    EXPECT_EQ(Security(u"/"_s), QStringList());
}

TEST_F(AccountsClassesTest, TheServersOwnListIsReachedInEveryVersionsWay)
{
    CreateUser(u"ann"_s);
    CreateRepository(u"r"_s);
    const auto entry = [this](std::uint32_t level) {
        return QList<WbemObjectPtr>{Entry(Account(u"Quenvolta_User"_s, u"ann"_s), level)};
    };
    const auto global = [this] {
        rows.elements.clear();
        Exec(u"Quenvolta_Repository"_s, u"GetGlobalSecurity"_s, {});
        return Show(rows.elements.value(u"Permissions"_s));
    };
    EXPECT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"SetGlobalSecurity"_s, {{u"Permissions"_s, entry(1)}}), S_OK);
    EXPECT_EQ(global(), QStringList{u"User ann 1"_s});
    EXPECT_EQ(SetSecurity({}, entry(2), {}), S_OK); // as a console sets it at a server of version 2.6
    EXPECT_EQ(global(), QStringList{u"User ann 2"_s});
    EXPECT_TRUE(Rules().contains("[/]\nann = rw\n"));

    // Older consoles name the object by its path.
    const QString service = u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s;
    const QString root = u"Quenvolta_Repository.Name=\"r\""_s;
    const QString entryPath = u"Quenvolta_RepositoryEntry.RepositoryName=\"r\",Path=\"/\""_s;
    const auto set = [&](const QString& object, const QList<WbemObjectPtr>& entries) {
        return CodeOf(u"Quenvolta_SecurityDescriptor"_s, u"SetSecurity"_s,
                      {{u"Object"_s, object}, {u"Permissions"_s, entries}});
    };
    const auto get = [&](const QString& object) {
        QString quoted = object;
        quoted.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
        Variant value;
        GetObject(u"Quenvolta_SecurityDescriptor.AssociatedObject=\"%1\""_s.arg(quoted))
            ->Get(u"Permissions"_s, &value, nullptr);
        return Show(std::get<QList<WbemObjectPtr>>(value));
    };
    EXPECT_EQ(set(service, entry(0)), S_OK);
    EXPECT_EQ(global(), QStringList{u"User ann 0"_s});
    EXPECT_EQ(get(service), QStringList{u"User ann 0"_s});
    EXPECT_THROW(get(root), ProviderError);
    EXPECT_EQ(set(entryPath, entry(1)), S_OK);
    EXPECT_EQ(get(root), QStringList{u"User ann 1"_s});
    EXPECT_EQ(set(root, {}), S_OK);
    EXPECT_THROW(get(entryPath), ProviderError);
    EXPECT_EQ(set(u"Quenvolta_User.Name=\"ann\""_s, entry(1)), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(set(u"x"_s, entry(1)), WBEM_E_INVALID_PARAMETER);
}

} // namespace quenvolta
