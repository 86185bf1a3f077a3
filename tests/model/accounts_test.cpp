#include "foundation/wmi_client_exception.h"
#include "model_test.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ExpectCode;
using test::Operation;
using test::StandInPermission;

namespace
{

class AccountsTest : public test::ModelTest
{
};

const PermissionList kEveryKind{{{AccountKind::Everyone, {}}, AccessLevel::ReadOnly},
                                {{AccountKind::User, u"ann"_s}, AccessLevel::ReadWrite},
                                {{AccountKind::Group, u"team"_s}, AccessLevel::NoAccess},
                                {{AccountKind::WindowsAccount, u"S-1-22-1-1000"_s}, AccessLevel{3}}};

const QList<StandInPermission> kEveryKindStored{{u"Quenvolta_Everyone"_s, u"Everyone"_s, 1},
                                                {u"Quenvolta_User"_s, u"ann"_s, 2},
                                                {u"Quenvolta_Group"_s, u"team"_s, 0},
                                                {u"Quenvolta_WindowsAccount"_s, u"S-1-22-1-1000"_s, 3}};

TEST_F(AccountsTest, KeepsUsersAndGroups)
{
    model.CreateUser(u"ann"_s, u"secret"_s);
    model.SetPassword(u"ann"_s, u"other"_s);
    model.CreateGroup(u"team"_s, {{GroupMemberKind::User, u"a\"n"_s}, {GroupMemberKind::Group, u"ops"_s}});
    EXPECT_EQ(model.GetUsers(), QStringList{u"ann"_s});
    EXPECT_EQ(model.GetGroups(), QStringList{u"team"_s});
    EXPECT_EQ(server.data.groups.first().members,
              (QStringList{u"Quenvolta_User.Name=\"a\\\"n\""_s, u"Quenvolta_Group.Name=\"ops\""_s}));
    EXPECT_EQ(server.CallsOf(u"SetPassword"_s).value(0).path, u"Quenvolta_User.Name=\"ann\"");
    EXPECT_EQ(server.CallsOf(u"SetPassword"_s).value(0).in.value(u"Password"_s), Variant(u"other"_s));

    const QList<GroupMember> members{{GroupMemberKind::Group, u"ops"_s}};
    model.SetGroupMembers(u"team"_s, members);
    EXPECT_EQ(model.GetGroupMembers(u"team"_s), members);
    // A member that is neither user nor group is passed over.
    server.data.groups.first().members.prepend(u"Quenvolta_Service.Name=\"x\""_s);
    EXPECT_EQ(model.GetGroupMembers(u"team"_s), members);

    model.DeleteGroup(u"team"_s);
    model.DeleteUser(u"ann"_s);
    ExpectCode(WBEM_E_NOT_FOUND, [this] { model.DeleteUser(u"ann"_s); });
    EXPECT_EQ(log, (QStringList{u"user created ann"_s, u"group created team"_s, u"members team"_s,
                                u"group deleted team"_s, u"user deleted ann"_s}));
}

TEST_F(AccountsTest, TurnsRefusalsThatDialogsExpectIntoResults)
{
    const QList<GroupMember> inner{{GroupMemberKind::Group, u"inner"_s}};
    const QList<GroupMember> outer{{GroupMemberKind::Group, u"outer"_s}};
    EXPECT_EQ(model.CreateUser(u"ann"_s, u"p"_s), UserCreation::Created);
    EXPECT_EQ(model.CreateGroup(u"inner"_s, {}), GroupCreation::Created);
    EXPECT_EQ(model.CreateGroup(u"outer"_s, inner), GroupCreation::Created);
    log.clear();
    EXPECT_EQ(model.CreateUser(u"ann"_s, u"p"_s), UserCreation::AlreadyExists);
    EXPECT_EQ(model.CreateGroup(u"outer"_s, {}), GroupCreation::AlreadyExists);
    EXPECT_EQ(model.CreateGroup(u"own"_s, {{GroupMemberKind::Group, u"own"_s}}), GroupCreation::MembersHaveCycles);
    EXPECT_EQ(model.SetGroupMembers(u"inner"_s, outer), MembershipChange::MembersHaveCycles);
    EXPECT_EQ(model.SetGroupMembers(u"none"_s, inner), MembershipChange::NoSuchGroup);
    // A missing member answers with the same code as a missing group.
    server.Fail(Operation::ExecMethod, u"SetMembers"_s, {WBEM_E_NOT_FOUND, server.ExtendedError(u"no bob"_s)});
    test::ExpectMessage<WMIClientException>(u"no bob"_s, [&] { model.SetGroupMembers(u"inner"_s, {}); });
    server.Fail(Operation::ExecMethod, u"Create"_s, {WBEM_E_NOT_FOUND}, 2);
    ExpectCode(WBEM_E_NOT_FOUND, [&] { model.CreateGroup(u"new"_s, {}); });
    ExpectCode(WBEM_E_NOT_FOUND, [&] { model.CreateUser(u"new"_s, u"p"_s); });
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(model.SetGroupMembers(u"outer"_s, inner), MembershipChange::Done);
    EXPECT_EQ(log, QStringList{u"members outer"_s});

    // What fails on the way to the server is no answer of the server.
    model.Disconnect();
    server.Fail(Operation::Connect, {}, {WBEM_E_ALREADY_EXISTS});
    ExpectCode(WBEM_E_ALREADY_EXISTS, [&] { model.CreateUser(u"bob"_s, u"p"_s); });
}

TEST(SecurityTest, GoesTheWayOfTheServersVersion)
{
    struct Row {
        QString version;
        TreePosition target;
        QString reader; // the method, or empty for the descriptor
        QString writer;
        QString writtenTo;
    };
    const QString repository = u"Quenvolta_Repository.Name=\"r\""_s;
    const QString descriptor = u"Quenvolta_SecurityDescriptor"_s;
    const Row rows[] = {
        {u"3.3"_s, {}, u"GetGlobalSecurity"_s, u"SetGlobalSecurity"_s, u"Quenvolta_Repository"_s},
        {u"2.7"_s, {u"r"_s, u"/"_s}, u"GetSecurity"_s, u"SetSecurity"_s, repository},
        {u"2.7"_s, {u"r"_s, u"/a \"b\""_s}, u"GetSecurity"_s, u"SetSecurity"_s, repository},
        {u"2.6"_s, {u"r"_s, u"/a \"b\""_s}, {}, u"SetSecurity"_s, repository},
        {u"2.5"_s, {u"r"_s, u"/a \"b\""_s}, {}, u"SetSecurity"_s, descriptor},
        {u"2.0"_s, {u"r"_s, u"/"_s}, {}, u"SetSecurity"_s, descriptor},
        {u"2.0"_s, {}, {}, u"SetSecurity"_s, descriptor},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE((row.version + u' ' + row.target.repositoryName + row.target.path).toStdString());
        test::VersionedModel versioned(row.version);
        versioned.server.data.repositories = {{.name = u"r"_s, .entries = {{u"/a \"b\""_s, true}}}};
        EXPECT_TRUE(versioned.model.GetSecurity(row.target).isEmpty());
        versioned.model.SetSecurity(row.target, kEveryKind);
        EXPECT_EQ((versioned.server.data.permissions.value({row.target.repositoryName, row.target.path})),
                  kEveryKindStored);
        const QList<test::RecordedCall> written = versioned.server.CallsOf(row.writer);
        ASSERT_EQ(written.size(), 1);
        EXPECT_EQ(written[0].path, row.writtenTo);

        EXPECT_EQ(versioned.model.GetSecurity(row.target), kEveryKind);
        EXPECT_EQ(versioned.server.CallsOf(row.reader.isEmpty() ? u"none"_s : row.reader).size(),
                  row.reader.isEmpty() ? 0 : 2);
    }
}

TEST(SecurityTest, LeavesTheServerWideListOfAServerThatHasNoneToTheServer)
{
    test::VersionedModel versioned(u"2.6"_s);
    ExpectCode(WBEM_E_NOT_FOUND, [&versioned] { versioned.model.SetSecurity({}, kEveryKind); });
    EXPECT_EQ(versioned.server.CallsOf(u"SetSecurity"_s).value(0).path, u"Quenvolta_Repository.Name=\"\"");
}

TEST_F(AccountsTest, AnnouncesPermissionsAndRefusesWhatIsNoAccount)
{
    server.data.repositories = {{.name = u"r"_s}};
    model.SetSecurity({u"r"_s, u"/"_s}, kEveryKind);
    EXPECT_EQ(log, QStringList{u"security r/ 4"_s});
    ExpectCode(E_INVALIDARG, [this] {
        model.SetSecurity({u"r"_s, u"/"_s}, {{{AccountKind{9}, u"x"_s}, AccessLevel::ReadOnly}});
    });
    EXPECT_EQ(log.size(), 1);
    server.data.permissions[{u"r"_s, u"/"_s}] = {{u"Quenvolta_Repository"_s, u"x"_s, 1}};
    ExpectCode(E_INVALIDARG, [this] { model.GetSecurity({u"r"_s, u"/"_s}); });
}

} // namespace

} // namespace quenvolta
