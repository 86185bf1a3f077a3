#include "foundation/exception.h"
#include "real_model.h"
#include "support/port_holder.h"
#include "support/qt_printers.h"

#include <QFile>

#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kStopped = 1;
constexpr std::uint32_t kRunning = 4;

// What the stock client says.
const QString kNotSignedIn = u"Authentication failed\n"_s;
const QString kUnknownIssuer = u"E230001: Server SSL certificate verification failed: issuer is not trusted\n"_s;
const QString kBlocked =
    u"svn: E165001: Commit blocked by pre-commit hook (exit code 3) with output:\nSay what you did.\n"_s;

QString Forbidden(const QString& path)
{
    return u"E175013: Access to '/svn/Project%1' forbidden\n"_s.arg(path);
}

QString Committed(int revision)
{
    return u"Committing transaction...\nCommitted revision %1.\n"_s.arg(revision);
}

// Refuses commits without a message.
const QString kHook = u"#!/bin/sh\n"
                      "test -n \"$(/usr/bin/svnlook log -t \"$2\" \"$1\")\" && exit 0\n"
                      "echo 'Say what you did.' >&2\n"
                      "exit 3\n"_s;

/// A server that an administrator sets up through the model, and the stock client that comes to it.
class FirstDayTest : public ::testing::Test
{
protected:
    void TearDown() override
    {
        try {
            if (real.model.GetHttpServiceState() != kStopped)
                real.model.StopHttpService();
            EXPECT_EQ(real.model.GetHttpServiceState(), kStopped);
        } catch (const Exception& failure) {
            ADD_FAILURE() << failure.GetMessage().toStdString();
        }
    }

    void Listen(bool secure) { real.model.SetNetworkOptions(secure, PortHolder::Free(), QStringList{u"127.0.0.1"_s}); }

    QString Url(const QString& path) { return real.model.BuildRepositoryUrl(u"Project"_s) + path; }

    ToolOutcome As(const QString& user, const QString& password, const QStringList& arguments) const
    {
        const QString authorities = u"servers:global:ssl-authority-files="_s + CertificateFile();
        return server.TrySvn(QStringList{u"--no-auth-cache"_s, u"--username"_s, user, u"--password"_s, password,
                                         u"--config-option"_s, authorities} +
                             arguments);
    }
    ToolOutcome AsAnn(const QStringList& arguments) const { return As(u"ann"_s, kAnnsPassword, arguments); }
    ToolOutcome AsBob(const QStringList& arguments) const { return As(u"bob"_s, bobsPassword, arguments); }

    static void ExpectLetIn(const ToolOutcome& outcome, const QString& output)
    {
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors.toStdString();
        EXPECT_EQ(outcome.output, output);
        EXPECT_EQ(outcome.errors, QString());
    }
    static void ExpectStopped(const ToolOutcome& outcome, const QString& errorsEnd)
    {
        EXPECT_EQ(outcome.exitCode, 1) << outcome.output.toStdString();
        EXPECT_TRUE(outcome.errors.endsWith(errorsEnd)) << outcome.errors.toStdString();
    }

    /// Everyone gets what the permissions and the hook give them. Makes /trunk/NAME in the revision.
    void ExpectAsConfigured(const QString& name, int revision)
    {
        const QString made = Url(u"/trunk/"_s + name);
        ExpectLetIn(AsAnn({u"list"_s, Url({})}), u"branches/\ntags/\ntrunk/\n"_s);
        ExpectLetIn(AsBob({u"list"_s, Url({})}), u"branches/\ntrunk/\n"_s);
        ExpectStopped(AsBob({u"list"_s, Url(u"/tags"_s)}), Forbidden(u"/tags"_s));
        ExpectStopped(As(u"bob"_s, u"wrong"_s, {u"list"_s, Url({})}), kNotSignedIn);
        ExpectStopped(As(u"eve"_s, kAnnsPassword, {u"list"_s, Url({})}), kNotSignedIn);

        ExpectStopped(AsBob({u"mkdir"_s, u"-m"_s, u"m"_s, made}), Forbidden(u"/!svn/me"_s));
        const ToolOutcome tag = AsAnn({u"mkdir"_s, u"-m"_s, u"m"_s, Url(u"/tags/"_s + name)});
        ExpectStopped(tag, u"/tags/%1' forbidden\n"_s.arg(name));
        ExpectStopped(AsAnn({u"mkdir"_s, u"-m"_s, u""_s, made}), kBlocked);
        EXPECT_EQ(real.model.GetRepository(u"Project"_s).totalRevisions, revision - 1);
        ExpectLetIn(AsAnn({u"mkdir"_s, u"-m"_s, u"m"_s, made}), Committed(revision));
        EXPECT_EQ(server.Svnlook({u"author"_s, server.RepositoriesFolder() + "/Project"_L1}), u"ann\n"_s);
    }

    QString CertificateFile() const { return server.Scratch(u"server.pem"_s); }

    const QString kAnnsPassword = u"Ann's \u00fcber secret"_s;
    QString bobsPassword = u""_s;
    RealServer server;
    RealModel real{LocalOptions(server)};
};

TEST_F(FirstDayTest, TheStockClientGetsWhatTheAdministratorConfigured)
{
    CModel& model = real.model;
    model.SetServerName(u"localhost"_s);
    Listen(false);
    model.StartHttpService();
    EXPECT_EQ(model.GetHttpServiceState(), kRunning);
    model.CreateRepository(u"Project"_s, true);
    EXPECT_EQ(Url(u"/"_s), model.GetUrl({u"Project"_s, u"/"_s}));
    ExpectStopped(AsAnn({u"list"_s, Url({})}), kNotSignedIn);

    EXPECT_EQ(model.CreateUser(u"ann"_s, kAnnsPassword), UserCreation::Created);
    EXPECT_EQ(model.CreateUser(u"bob"_s, bobsPassword), UserCreation::Created);
    EXPECT_EQ(model.CreateGroup(u"devs"_s, {{GroupMemberKind::User, u"ann"_s}}), GroupCreation::Created);
    ExpectStopped(AsAnn({u"list"_s, Url({})}), Forbidden({}));
    const Account devs{AccountKind::Group, u"devs"_s};
    const Account bob{AccountKind::User, u"bob"_s};
    model.SetSecurity({u"Project"_s, u"/"_s}, {{devs, AccessLevel::ReadWrite}, {bob, AccessLevel::ReadOnly}});
    model.SetSecurity({u"Project"_s, u"/tags"_s}, {{devs, AccessLevel::ReadOnly}, {bob, AccessLevel::NoAccess}});
    model.SetHook(u"Project"_s, HookKind::PreCommit, kHook);
    EXPECT_EQ(model.GetHook(u"Project"_s, HookKind::PreCommit), (HookInfo{kHook, true}));
    ExpectAsConfigured(u"over-http"_s, 2);

    // What the console shows of the certificate is what the client meets.
    EXPECT_EQ(model.GetCertificateInformation(), CertificateInfo{});
    model.CreateSelfSignedCertificate({.commonName = u"localhost"_s, .organization = u"Us"_s}, 30);
    const CertificateInfo certificate = model.GetCertificateInformation();
    EXPECT_EQ(certificate.issuedTo, u"localhost");
    EXPECT_EQ(certificate.organization, u"Us");
    EXPECT_EQ(certificate.validFrom.toUTC().daysTo(certificate.validTo.toUTC()), 30);
    EXPECT_EQ(model.ValidateCertificate(certificate.base64Certificate), 0U);
    QFile file(CertificateFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(certificate.base64Certificate.toLatin1());
    file.close();

    const QString before = Url({});
    Listen(true);
    model.RestartHttpService();
    EXPECT_TRUE(Url({}).startsWith("https://localhost:"_L1)) << Url({}).toStdString();
    ExpectStopped(AsAnn({u"list"_s, before}), u"Connection refused\n"_s);
    ExpectStopped(server.TrySvn({u"list"_s, Url({})}), kUnknownIssuer);
    bobsPassword = u"new"_s;
    model.SetPassword(u"bob"_s, bobsPassword);
    ExpectStopped(As(u"bob"_s, u""_s, {u"list"_s, Url({})}), kNotSignedIn);
    ExpectAsConfigured(u"over-https"_s, 3);

    // Each limit goes with what made it.
    model.DeleteHook(u"Project"_s, HookKind::PreCommit);
    ExpectLetIn(AsAnn({u"mkdir"_s, u"-m"_s, u""_s, Url(u"/trunk/silent"_s)}), Committed(4));
    EXPECT_EQ(model.SetGroupMembers(u"devs"_s, {}), MembershipChange::Done);
    ExpectStopped(AsAnn({u"list"_s, Url({})}), Forbidden({}));
    model.DeleteUser(u"ann"_s);
    ExpectStopped(AsAnn({u"list"_s, Url({})}), kNotSignedIn);
}

// The server's own answers become the results that the dialogs word.
TEST_F(FirstDayTest, TheProvidersRefusalsAreTheModelsResults)
{
    CModel& model = real.model;
    const auto members = [](const QString& group) { return QList<GroupMember>{{GroupMemberKind::Group, group}}; };
    EXPECT_EQ(model.CreateUser(u"ann"_s, u"p"_s), UserCreation::Created);
    EXPECT_EQ(model.CreateUser(u"ann"_s, u"q"_s), UserCreation::AlreadyExists);
    EXPECT_EQ(model.CreateGroup(u"inner"_s, {}), GroupCreation::Created);
    EXPECT_EQ(model.CreateGroup(u"outer"_s, members(u"inner"_s)), GroupCreation::Created);
    EXPECT_EQ(model.CreateGroup(u"outer"_s, {}), GroupCreation::AlreadyExists);
    EXPECT_EQ(model.CreateGroup(u"own"_s, members(u"own"_s)), GroupCreation::MembersHaveCycles);
    EXPECT_EQ(model.SetGroupMembers(u"inner"_s, members(u"outer"_s)), MembershipChange::MembersHaveCycles);
    EXPECT_EQ(model.SetGroupMembers(u"none"_s, {}), MembershipChange::NoSuchGroup);
    EXPECT_THROW(model.SetGroupMembers(u"outer"_s, members(u"none"_s)), Exception);
    EXPECT_EQ(model.GetGroupMembers(u"outer"_s), members(u"inner"_s));
    EXPECT_TRUE(model.GetGroupMembers(u"inner"_s).isEmpty());
}

TEST_F(FirstDayTest, ListsThatHoldNothingAreEmptyAndAnyListComesBack)
{
    CModel& model = real.model;
    model.CreateRepository(u"Project"_s, false);
    EXPECT_TRUE(model.GetChildren({u"Project"_s, u"/"_s}).isEmpty());
    EXPECT_TRUE(model.GetSecurity({u"Project"_s, u"/"_s}).isEmpty());
    EXPECT_EQ(model.GetDelegationSettings(u"Project"_s), RoleSettings{});
    EXPECT_EQ(model.GetReplicationSettings(u"Project"_s), RoleSettings{});
    EXPECT_EQ(model.GetServerAdmins() + model.GetRepositorySupervisors() + model.GetReplicationPartners(),
              QStringList{});

    const QStringList accounts{u"S-1-22-1-1000"_s, u"S-1-22-2-100"_s};
    model.SetServerAdmins(accounts);
    model.SetRepositorySupervisors(accounts.first(1));
    model.SetReplicationPartners(accounts.last(1));
    model.SetDelegationSettings(u"Project"_s, {true, accounts});
    model.SetReplicationSettings(u"Project"_s, {false, accounts});
    EXPECT_EQ(model.GetServerAdmins(), accounts);
    EXPECT_EQ(model.GetRepositorySupervisors(), accounts.first(1));
    EXPECT_EQ(model.GetReplicationPartners(), accounts.last(1));
    EXPECT_EQ(model.GetDelegationSettings(u"Project"_s), (RoleSettings{true, accounts}));
    EXPECT_EQ(model.GetReplicationSettings(u"Project"_s), (RoleSettings{false, accounts}));
    model.SetServerAdmins({});
    EXPECT_EQ(model.GetServerAdmins(), QStringList{});
    model.EnableQdfsService();
    EXPECT_EQ(model.GetQdfsServiceState().startMode, kStartModeAutomatic);
}

} // namespace

} // namespace quenvolta::test
