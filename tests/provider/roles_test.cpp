#include "server_fixture.h"

namespace quenvolta
{

namespace
{

class RolesTest : public ServerFixture
{
protected:
    const QString m_service = u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s;
    const QString m_qdfs = u"Quenvolta_QdfsService.Name=\"qdfssvc\""_s;

    QList<WbemObjectPtr> Accounts(const QStringList& identifiers) const
    {
        QList<WbemObjectPtr> accounts;
        for (const QString& identifier : identifiers) {
            accounts.append(std::make_shared<WbemObject>(m_server->Classes().Find(u"Quenvolta_WindowsAccount"_s)));
            accounts.back()->Put(u"SID"_s, identifier);
        }
        return accounts;
    }

    QStringList Listed(const QString& path, const QString& method, const QString& parameter)
    {
        Exec(path, method);
        QStringList identifiers;
        for (const WbemObjectPtr& each : m_rows.elements.value(parameter))
            identifiers.append(Text(each, u"SID"_s));
        return identifiers;
    }

    static QString Repository(const QString& name) { return u"Quenvolta_Repository.Name=\""_s + name + u'"'; }
    void Create(const QString& name) { Exec(u"Quenvolta_Repository"_s, u"Create"_s, {{u"Name"_s, name}}); }
    void Delegate(const QString& name, const QStringList& identifiers)
    {
        Exec(Repository(name), u"SetDelegationSettings"_s,
             {{u"Enabled"_s, true}, {u"Managers"_s, Accounts(identifiers)}});
    }
    /// "on" or "off" and the managers.
    QStringList Delegation(const QString& name)
    {
        const Variant enabled = Value(Exec(Repository(name), u"GetDelegationSettings"_s), u"Enabled"_s);
        return QStringList(enabled == Variant(true) ? u"on"_s : u"off"_s) +
               Listed(Repository(name), u"GetDelegationSettings"_s, u"Managers"_s);
    }
};

TEST_F(RolesTest, EachListKeepsItsOrderApartFromTheOthersAndAcrossProviders)
{
    const struct {
        QString path;
        QString subject;
        QString parameter;
        QStringList accounts;
    } lists[] = {
        {m_service, u"ServerAdmins"_s, u"Admins"_s, {u"S-1-5-21-3-2-1-500"_s, u"S-1-22-1-0"_s, u"S-1-22-2-7"_s}},
        {m_service,
         u"RepositorySupervisors"_s,
         u"Supervisors"_s,
         {u"S-1-22-1-0"_s, u"s-1-5-32-544"_s, u"S-1-22-1-0"_s}},
        {m_qdfs, u"ReplicationPartners"_s, u"Partners"_s, {u"S-1-0x0123456789AB-1"_s}},
    };
    for (const auto& list : lists) {
        EXPECT_TRUE(Listed(list.path, "Get"_L1 + list.subject, list.parameter).isEmpty());
        Exec(list.path, "Set"_L1 + list.subject, {{list.parameter, Accounts(list.accounts)}});
    }
    DataFolder again(m_data.Path());
    m_server = MakeServerNamespace(again, ServedVersion(u"3.3.1"_s));
    for (const auto& list : lists)
        EXPECT_EQ(Listed(list.path, "Get"_L1 + list.subject, list.parameter), list.accounts);
    Exec(m_service, u"SetServerAdmins"_s, {{u"Admins"_s, QList<WbemObjectPtr>()}});
    EXPECT_TRUE(Listed(m_service, u"GetServerAdmins"_s, u"Admins"_s).isEmpty());
}

TEST_F(RolesTest, WhatIsNoAccountIsRefusedAndTheListStays)
{
    Exec(m_service, u"SetServerAdmins"_s, {{u"Admins"_s, Accounts({u"S-1-22-1-1"_s})}});
    const auto codeOf = [this](const QList<WbemObjectPtr>& accounts) {
        return ErrorOf(m_service, u"SetServerAdmins"_s, {{u"Admins"_s, accounts}}).Code();
    };
    for (const QString& text : {QString(), u"root"_s, u"S-1-22-1"_s + QChar(u'\n'), u"S-1-22-1-0\nS-1-22-1-2"_s,
                                u"S-1-22-1-99999999999"_s, u"S-1-22-1-1"_s + QChar(u'\0')})
        EXPECT_EQ(codeOf(Accounts({u"S-1-22-1-5"_s, text})), WBEM_E_INVALID_PARAMETER) << text.toStdString();
    EXPECT_EQ(codeOf({std::make_shared<WbemObject>(m_server->Classes().Find(u"Quenvolta_User"_s))}),
              WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(codeOf({std::make_shared<WbemObject>(m_server->Classes().Find(u"Quenvolta_WindowsAccount"_s))}),
              WBEM_E_INVALID_PARAMETER)
        << "null";
    EXPECT_EQ(codeOf(Accounts(QStringList(10'001, u"S-1-22-1-1"_s))), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(m_service, u"SetServerAdmins"_s, {}).Code(), WBEM_E_INVALID_METHOD_PARAMETERS);
    EXPECT_EQ(Listed(m_service, u"GetServerAdmins"_s, u"Admins"_s), QStringList(u"S-1-22-1-1"_s));
}

TEST_F(RolesTest, ARepositorysListsGoWithItAndNeverToAnother)
{
    for (const QString& name : {u"project"_s, u"Project"_s, u"50% \u00e4"_s}) {
        Create(name);
        EXPECT_EQ(Delegation(name), QStringList(u"off"_s));
    }
    Delegate(u"project"_s, {u"S-1-22-1-2"_s, u"S-1-22-1-1"_s});
    Delegate(u"50% \u00e4"_s, {u"S-1-22-1-3"_s});
    Exec(Repository(u"project"_s), u"SetReplicationSettings"_s,
         {{u"Enabled"_s, false}, {u"Replicators"_s, Accounts({u"S-1-22-2-9"_s})}});
    EXPECT_EQ(Delegation(u"Project"_s), QStringList(u"off"_s)) << "another repository by case alone";

    const Parameters rename{{u"OldName"_s, u"project"_s}, {u"NewName"_s, u"renamed"_s}};
    Exec(u"Quenvolta_Repository"_s, u"Rename"_s, rename);
    m_repeated = true;
    Exec(u"Quenvolta_Repository"_s, u"Rename"_s, rename);
    m_repeated = false;
    EXPECT_EQ(Delegation(u"renamed"_s), QStringList({u"on"_s, u"S-1-22-1-2"_s, u"S-1-22-1-1"_s}));
    EXPECT_EQ(Listed(Repository(u"renamed"_s), u"GetReplicationSettings"_s, u"Replicators"_s),
              QStringList(u"S-1-22-2-9"_s));
    EXPECT_EQ(ErrorOf(Repository(u"project"_s), u"GetDelegationSettings"_s, {}).Code(), WBEM_E_NOT_FOUND);
    Create(u"project"_s);
    EXPECT_EQ(Delegation(u"project"_s), QStringList(u"off"_s)) << "the old name starts anew";

    // A rename that fails takes nothing from anybody.
    EXPECT_EQ(
        ErrorOf(u"Quenvolta_Repository"_s, u"Rename"_s, {{u"OldName"_s, u"renamed"_s}, {u"NewName"_s, u"50% \u00e4"_s}})
            .Code(),
        WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(Delegation(u"50% \u00e4"_s), QStringList({u"on"_s, u"S-1-22-1-3"_s}));
    EXPECT_EQ(Delegation(u"renamed"_s).size(), 3);

    Exec(u"Quenvolta_Repository"_s, u"Delete"_s, {{u"Name"_s, u"renamed"_s}});
    Create(u"renamed"_s);
    EXPECT_EQ(Delegation(u"renamed"_s), QStringList(u"off"_s));
    // Those whose folders were removed by hand left their lists behind.
    const QString root = m_data.Path() + "/repositories/"_L1;
    Delegate(u"renamed"_s, {u"S-1-22-1-4"_s});
    for (const QString& name : {u"50% \u00e4"_s, u"renamed"_s})
        ASSERT_TRUE(QDir(root + name).removeRecursively());
    Create(u"50% \u00e4"_s);
    EXPECT_EQ(Delegation(u"50% \u00e4"_s), QStringList(u"off"_s));
    Exec(u"Quenvolta_Repository"_s, u"ImportRepository"_s,
         {{u"Name"_s, u"renamed"_s}, {u"ImportPath"_s, QString(root + u"project"_s)}});
    EXPECT_EQ(Delegation(u"renamed"_s), QStringList(u"off"_s));
}

TEST_F(RolesTest, TheStartModeOfTheReplicationServiceIsKept)
{
    const auto mode = [this] {
        CallContext context{m_server->Classes(), m_rows, {}, {}, false};
        return std::get<std::uint32_t>(Value(m_server->GetObject(m_qdfs, context), u"StartMode"_s));
    };
    EXPECT_EQ(mode(), 4U);
    Exec(m_qdfs, u"ChangeStartMode"_s, {{u"StartMode"_s, 2}});
    EXPECT_EQ(mode(), 2U);
    for (const qint32 wrong : {1, 5, -2})
        EXPECT_EQ(ErrorOf(m_qdfs, u"ChangeStartMode"_s, {{u"StartMode"_s, wrong}}).Code(), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(mode(), 2U);
}

} // namespace

} // namespace quenvolta
