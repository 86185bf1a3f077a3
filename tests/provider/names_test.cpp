#include "memory_folder.h"
#include "namespace_fixture.h"
#include "provider/accounts/account_store.h"
#include "provider/classes/group_class.h"
#include "provider/classes/repository_class.h"
#include "provider/classes/repository_entry_class.h"
#include "provider/classes/repository_security_methods.h"
#include "provider/classes/user_class.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_pool.h"

#include <QFile>

#include <svn_repos.h>

namespace quenvolta
{

namespace
{

/// A server in memory whose passwords cost nothing.
class NamesTest : public NamespaceFixture
{
protected:
    NamesTest()
    {
        const auto accounts = std::make_shared<AccountStore>(
            m_data, AccountStore::Options{PasswordHash::kLowestCost, std::make_shared<TrueSystemAccounts>()});
        m_security = std::make_shared<RepositorySecurityMethods>(m_data, accounts);
        const auto repositories = std::make_shared<RepositoryClass>(m_data, accounts);
        m_security->AddTo(*repositories);
        server = std::make_unique<ManagementNamespace>(u"Quenvolta"_s, ServedVersion(u"3.3.1"_s).Table());
        server->Add(u"Quenvolta_User"_s, std::make_shared<UserClass>(accounts));
        server->Add(u"Quenvolta_Group"_s, std::make_shared<GroupClass>(accounts));
        server->Add(u"Quenvolta_Repository"_s, repositories);
        server->Add(u"Quenvolta_RepositoryEntry"_s, std::make_shared<RepositoryEntryClass>(m_data, accounts));
        accounts->Repair();
    }

    /// Every sign that means something somewhere, or is none, before, in and after a name, and alone.
    static QStringList Names()
    {
        QStringList signs;
        for (char16_t c = 0; c < 0x30; ++c)
            signs.append(QString(QChar(c)));
        for (const char16_t c : u":;<=>?@[\\]^_`{|}~\u007f\u0085\u00a0\u00ad\u0301\u200b\u2028\u202e\ufeff\ufffe\ufffd")
            signs.append(QString(QChar(c)));
        signs << QString(QChar(0xd800)) << QString(QChar(0xdc00)) << u"😀"_s << u"日本"_s << u"ж"_s << u"ה"_s << u"ß"_s
              << u".."_s << u"\r\n"_s << u"%41"_s << u"%(ann)s"_s << u"${x}"_s << u"//"_s << u"\\\""_s << u"[/]"_s;
        QStringList names;
        for (const QString& sign : std::as_const(signs))
            names << sign << sign + u'a' << u'a' + sign + u'b' << u'a' + sign;
        names.removeDuplicates();
        names.sort();
        return names;
    }

    WbemObjectPtr Object(const QString& className, const QList<std::pair<QStringView, QString>>& values) const
    {
        InstanceRow row(server->Classes().Find(className));
        for (const auto& [property, value] : values)
            row.Set(property, value);
        return row.ToObject();
    }
    QString PathTo(const QString& className, const QList<std::pair<QStringView, QString>>& keys) const
    {
        return RelativePathOf(*std::dynamic_pointer_cast<WbemObject>(Object(className, keys)));
    }
    WbemObjectPtr Entry(const QString& className, const QString& name, std::uint32_t level) const
    {
        InstanceRow row(server->Classes().Find(u"Quenvolta_PermissionEntry"_s));
        row.Set(u"Account", Object(className, {{u"Name", name}})).Set(u"AccessLevel", level);
        return row.ToObject();
    }
    QStringList EntryNames() const
    {
        QStringList names;
        for (const WbemObjectPtr& entry : rows.elements.value(u"Permissions"_s)) {
            Variant account;
            entry->Get(u"Account"_s, &account, nullptr);
            names.append(Text(std::get<WbemObjectPtr>(account), u"Name"_s));
        }
        return names;
    }

    /// The names that may be given to what the class holds; the others are refused and change nothing.
    QStringList Create(const QString& className, const QList<std::pair<QString, Variant>>& more)
    {
        QStringList kept;
        for (const QString& name : Names()) {
            const QByteArray before = Content(u"accounts.json"_s);
            const HRESULT code =
                CodeOf(className, u"Create"_s, QList<std::pair<QString, Variant>>{{u"Name"_s, name}} + more);
            if (code == S_OK) {
                kept.append(name);
                continue;
            }
            EXPECT_EQ(code, WBEM_E_INVALID_PARAMETER) << name.toStdString();
            EXPECT_EQ(Content(u"accounts.json"_s), before) << name.toStdString();
        }
        // By every way that a console comes to them.
        EXPECT_EQ(NamespaceFixture::Names(className), kept);
        for (const QString& name : std::as_const(kept))
            EXPECT_EQ(Text(GetObject(PathTo(className, {{u"Name", name}})), u"Name"_s), name);
        return kept;
    }

    QByteArray Content(const QString& name) const
    {
        QFile file(m_data.Path() + u'/' + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    /// Whether Subversion's library lets the user write there.
    bool MayWrite(const QString& user, const QString& repository, const QString& path) const
    {
        SvnPool pool;
        svn_authz_t* rules = nullptr;
        svn_boolean_t granted = FALSE;
        CheckSvn(svn_repos_authz_read4(&rules, QFile::encodeName(m_data.Path() + "/authz"_L1).constData(), nullptr,
                                       TRUE, nullptr, nullptr, nullptr, pool.Get(), pool.Get()),
                 u"parse");
        CheckSvn(svn_repos_authz_check_access(rules, repository.toUtf8().constData(), path.toUtf8().constData(),
                                              user.toUtf8().constData(), svn_authz_write, &granted, pool.Get()),
                 u"check");
        return granted;
    }

    QTemporaryDir m_memory{MemoryFolder()};
    DataFolder m_data{m_memory.filePath(u"data"_s)};
    std::shared_ptr<RepositorySecurityMethods> m_security;
};

} // namespace

TEST_F(NamesTest, UsersAndGroupsAreRefusedOrStoredAsTheyAre)
{
    const QString user = u"Quenvolta_User"_s;
    const QString group = u"Quenvolta_Group"_s;
    const QStringList users = Create(user, {{u"Password"_s, u"pw"_s}});
    const QStringList groups = Create(group, {{u"Members"_s, QStringList()}});
    EXPECT_EQ(users, groups);
    EXPECT_GT(users.size(), 60);

    QStringList expected;
    for (const QString& name : users)
        expected.append(name + u':');
    QStringList lines;
    for (const QByteArray& line : Content(u"htpasswd"_s).split('\n'))
        lines.append(QString::fromUtf8(line.left(line.indexOf(':') + 1)));
    lines.removeAll(QString());
    EXPECT_EQ(lines, expected);

    // As members, and as accounts of permissions.
    QStringList members;
    QList<WbemObjectPtr> entries;
    for (const QString& name : users) {
        members.append(PathTo(user, {{u"Name", name}}));
        entries.append(Entry(user, name, 2));
    }
    for (const QString& name : groups) {
        ASSERT_EQ(CodeOf(PathTo(group, {{u"Name", name}}), u"SetMembers"_s,
                         {{u"Members"_s, QStringList{PathTo(user, {{u"Name", name}})}}}),
                  S_OK);
        members.append(PathTo(group, {{u"Name", name}}));
        entries.append(Entry(group, name, 2));
    }
    ASSERT_EQ(CodeOf(group, u"Create"_s, {{u"Name"_s, u"everybody"_s}, {u"Members"_s, members}}), S_OK);
    rows.elements.clear();
    Exec(PathTo(group, {{u"Name", u"everybody"_s}}), u"GetMembers"_s, {});
    QStringList read;
    for (const WbemObjectPtr& member : rows.elements.value(u"Members"_s))
        read.append(RelativePathOf(*std::dynamic_pointer_cast<WbemObject>(member)));
    EXPECT_EQ(read, members);
    ASSERT_EQ(CodeOf(u"Quenvolta_Repository"_s, u"SetGlobalSecurity"_s, {{u"Permissions"_s, entries}}), S_OK);
    rows.elements.clear();
    Exec(u"Quenvolta_Repository"_s, u"GetGlobalSecurity"_s, {});
    EXPECT_EQ(EntryNames(), users + groups);
    for (const QString& name : users)
        EXPECT_TRUE(MayWrite(name, u"r"_s, u"/"_s)) << name.toStdString();
    // Through the groups alone, each of which holds the user of its name.
    ASSERT_EQ(
        CodeOf(u"Quenvolta_Repository"_s, u"SetGlobalSecurity"_s, {{u"Permissions"_s, entries.mid(users.size())}}),
        S_OK);
    for (const QString& name : users)
        EXPECT_TRUE(MayWrite(name, u"r"_s, u"/"_s)) << name.toStdString();

    ASSERT_EQ(CodeOf(group, u"Delete"_s, {{u"Name"_s, u"everybody"_s}}), S_OK);
    for (const QString& name : users) {
        EXPECT_EQ(CodeOf(user, u"Delete"_s, {{u"Name"_s, name}}), S_OK) << name.toStdString();
        EXPECT_EQ(CodeOf(group, u"Delete"_s, {{u"Name"_s, name}}), S_OK) << name.toStdString();
    }
    EXPECT_TRUE(NamespaceFixture::Names(user).isEmpty() && NamespaceFixture::Names(group).isEmpty());
    EXPECT_EQ(Content(u"htpasswd"_s), "");
    EXPECT_FALSE(Content(u"authz"_s).contains('='));
}

TEST_F(NamesTest, RepositoriesAndPathsAreRefusedOrStoredAsTheyAre)
{
    const QString repository = u"Quenvolta_Repository"_s;
    const QString entry = u"Quenvolta_RepositoryEntry"_s;
    CodeOf(u"Quenvolta_User"_s, u"Create"_s, {{u"Name"_s, u"ann"_s}, {u"Password"_s, u"pw"_s}});
    const Variant permissions = QList<WbemObjectPtr>{Entry(u"Quenvolta_User"_s, u"ann"_s, 2)};
    const QStringList repositories = Create(repository, {});
    EXPECT_GT(repositories.size(), 60);
    for (const QString& name : repositories) {
        const QString path = PathTo(repository, {{u"Name", name}});
        EXPECT_FALSE(MayWrite(u"ann"_s, name, u"/"_s)) << name.toStdString() << ": another one's permissions count";
        ASSERT_EQ(CodeOf(path, u"SetSecurity"_s, {{u"Path"_s, u"/"_s}, {u"Permissions"_s, permissions}}), S_OK)
            << name.toStdString();
        EXPECT_TRUE(MayWrite(u"ann"_s, name, u"/"_s)) << name.toStdString();
        EXPECT_EQ(CodeOf(repository, u"Delete"_s, {{u"Name"_s, name}}), S_OK) << name.toStdString();
    }
    EXPECT_FALSE(Content(u"authz"_s).contains('='));

    ASSERT_EQ(CodeOf(repository, u"Create"_s, {{u"Name"_s, u"r"_s}}), S_OK);
    const QString only = PathTo(repository, {{u"Name", u"r"_s}});
    QStringList kept;
    int withPermissions = 0;
    for (const QString& name : Names()) {
        const QString path = u'/' + name;
        const HRESULT code =
            CodeOf(only, u"CreateFolders"_s, {{u"Folders"_s, QStringList{path}}, {u"Message"_s, name}});
        if (code != S_OK) {
            EXPECT_TRUE(code == WBEM_E_INVALID_PARAMETER || (code == WBEM_E_NOT_FOUND && name.contains(u'/')))
                << name.toStdString();
            continue;
        }
        if (!name.contains(u'/')) // a folder in one that is there already
            kept.append(name);
        EXPECT_EQ(Text(GetObject(PathTo(entry, {{u"RepositoryName", u"r"_s}, {u"Path", path}})), u"Path"_s), path);
        const bool canHave = !name.contains(u']');
        EXPECT_EQ(CodeOf(only, u"SetSecurity"_s, {{u"Path"_s, path}, {u"Permissions"_s, permissions}}),
                  canHave ? S_OK : WBEM_E_INVALID_PARAMETER)
            << name.toStdString();
        if (canHave) {
            EXPECT_EQ(MayWrite(u"ann"_s, u"r"_s, path), ++withPermissions > 0) << name.toStdString();
        }
    }
    EXPECT_GT(kept.size(), 60);
    rows.elements.clear();
    Exec(only, u"GetChildren"_s, {{u"Path"_s, u"/"_s}});
    QStringList children;
    for (const WbemObjectPtr& child : rows.elements.value(u"Children"_s))
        children.append(Text(child, u"Path"_s).mid(1));
    children.sort();
    EXPECT_EQ(children.join(u'\n').toStdString(), kept.join(u'\n').toStdString());
    EXPECT_FALSE(MayWrite(u"ann"_s, u"r"_s, u"/other"_s));
    EXPECT_EQ(Content(u"authz"_s).count("\n[r:/"), withPermissions);
}

} // namespace quenvolta
