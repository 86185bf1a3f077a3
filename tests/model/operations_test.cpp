#include "model_test.h"

#include <functional>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using test::ExpectCode;
using test::Operation;

namespace
{

class OperationsTest : public test::ModelTest
{
};

using Parameters = QMap<QString, Variant>;

/// An operation, the call that it makes, and what the subscribers hear of it.
struct OperationRow {
    QString method;
    QString path;
    std::function<void(CModel&)> run;
    Parameters in = {};
    QString event = {};
};

const QString kService = u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s;
const QString kQdfsService = u"Quenvolta_QdfsService.Name=\"qdfssvc\""_s;
const QString kRepository = u"Quenvolta_Repository.Name=\"r\""_s;
const CertificateSubjectInfo kSubject{u"srv1"_s, {u"srv2"_s, u"srv3"_s}, u"o"_s, u"ou"_s, u"DE"_s, u"st"_s, u"c"_s};
const Parameters kSubjectParameters{
    {u"CommonName"_s, u"srv1"_s}, {u"AdditionalNames"_s, QStringList{u"srv2"_s, u"srv3"_s}},
    {u"Organization"_s, u"o"_s},  {u"OrganizationUnit"_s, u"ou"_s},
    {u"CountryCode"_s, u"DE"_s},  {u"State"_s, u"st"_s},
    {u"City"_s, u"c"_s}};

QList<OperationRow> OperationRows()
{
    Parameters selfSigned = kSubjectParameters;
    selfSigned.insert(u"Days"_s, 3650);
    const QString settings = u"settings"_s;
    return {
        {u"StartService"_s, kService, [](CModel& model) { model.StartHttpService(); }},
        {u"StopService"_s, kService, [](CModel& model) { model.StopHttpService(); }},
        {u"RestartService"_s, kService, [](CModel& model) { model.RestartHttpService(); }},
        {u"StartService"_s, kQdfsService, [](CModel& model) { model.StartQdfsService(); }},
        {u"StopService"_s, kQdfsService, [](CModel& model) { model.StopQdfsService(); }},
        {u"ChangeStartMode"_s, kQdfsService, [](CModel& model) { model.EnableQdfsService(); }, {{u"StartMode"_s, 2}}},
        {u"SetAuthenticationOptions"_s,
         kService,
         [](CModel& model) {
             model.SetAuthenticationOptions({true, false, true, true});
         },
         {{u"AuthType"_s, 1}, {u"WindowsBasic"_s, false}, {u"WindowsIntegrated"_s, true}, {u"UseUPNFormat"_s, true}},
         settings},
        {u"SetNetworkOptions"_s,
         kService,
         [](CModel& model) { model.SetNetworkOptions(true, 8443, {}); },
         {{u"UseSecureConnection"_s, true}, {u"Port"_s, 8443}},
         settings},
        {u"SetNetworkOptions"_s,
         kService,
         [](CModel& model) { model.SetNetworkOptions(false, 81, QStringList{}); },
         {{u"UseSecureConnection"_s, false}, {u"Port"_s, 81}, {u"ListenIPAddressesArray"_s, QStringList{}}},
         settings},
        {u"SetServerName"_s,
         kService,
         [](CModel& model) { model.SetServerName(u"svn.example.org"_s); },
         {{u"UseCustom"_s, true}, {u"CustomServerName"_s, u"svn.example.org"_s}},
         settings},
        {u"SetServerName"_s,
         kService,
         [](CModel& model) { model.SetServerName({}); },
         {{u"UseCustom"_s, false}},
         settings},
        {u"SetLoggingOptions"_s,
         kService,
         [](CModel& model) { model.SetLoggingOptions(true, false); },
         {{u"EnableAccessLogging"_s, true}, {u"EnableOperationalLogging"_s, false}},
         settings},
        {u"SetWebInterfaceOptions"_s,
         kService,
         [](CModel& model) { model.SetWebInterfaceOptions(false); },
         {{u"RedirectFromLegacyWebInterface"_s, false}},
         settings},
        {u"SetRepositoriesRoot"_s,
         kService,
         [](CModel& model) { EXPECT_EQ(model.SetRepositoriesRoot(u"/new"_s, false, true), kRepositoriesRootSet); },
         {{u"RepositoriesRoot"_s, u"/new"_s}, {u"AdjustPermissions"_s, false}, {u"ForceCreate"_s, true}},
         settings},
        {u"CreateSelfSignedCertificate"_s, kService,
         [](CModel& model) { model.CreateSelfSignedCertificate(kSubject, 3650); }, selfSigned},
        {u"CreateCertificateRequest"_s, kService,
         [](CModel& model) { EXPECT_EQ(model.CreateCertificateRequest(kSubject), u"request for srv1"); },
         kSubjectParameters},
        {u"ImportCertificate"_s,
         kService,
         [](CModel& model) { model.ImportCertificate(u"text"_s); },
         {{u"Base64Certificate"_s, u"text"_s}}},
        {u"ValidateCertificate"_s,
         kService,
         [](CModel& model) { EXPECT_EQ(model.ValidateCertificate(u"text"_s), 4U); },
         {{u"Base64Certificate"_s, u"text"_s}}},
        {u"DeleteHook"_s,
         kRepository,
         [](CModel& model) { model.DeleteHook(u"r"_s, HookKind::StartCommit); },
         {{u"Kind"_s, 8}}},
        {u"SetHook"_s,
         kRepository,
         [](CModel& model) { model.SetHook(u"r"_s, HookKind::PreCommit, u""_s); },
         {{u"Kind"_s, 4}, {u"Hook"_s, u""_s}}},
        {u"GetHook"_s,
         kRepository,
         [](CModel& model) {
             EXPECT_EQ(model.GetHook(u"r"_s, HookKind::PreCommit), (HookInfo{u""_s, true}));
         },
         {{u"Kind"_s, 4}}},
    };
}

TEST_F(OperationsTest, EachMakesItsCallAndIsAnnouncedAfterSuccessAlone)
{
    server.data.repositories = {{.name = u"r"_s}};
    server.data.validation = 4;
    for (const OperationRow& row : OperationRows()) {
        SCOPED_TRACE(row.method.toStdString());
        server.Fail(Operation::ExecMethod, row.method, {E_ACCESSDENIED});
        ExpectCode(E_ACCESSDENIED, [&] { row.run(model); });
        EXPECT_TRUE(log.isEmpty());
        row.run(model);
        const test::RecordedCall call = server.CallsOf(row.method).last();
        EXPECT_EQ(call.path, row.path);
        EXPECT_EQ(call.in, row.in);
        EXPECT_EQ(log.join(u','), row.event);
        log.clear();
    }
    EXPECT_EQ(model.GetServerSettings().repositoriesRoot, u"/new");
    EXPECT_EQ(model.GetServerSettings().unsecurePort, 81U);
    EXPECT_EQ(model.GetHook(u"r"_s, HookKind::StartCommit), HookInfo{});

    // A root that isn't there is an answer, and no change.
    server.data.missingFolders = {u"/none"_s};
    EXPECT_EQ(model.SetRepositoriesRoot(u"/none"_s, true, false), kRepositoriesRootMissing);
    EXPECT_TRUE(log.isEmpty());
}

TEST(OldServerOperationsTest, SendOnlyWhatTheServerTakes)
{
    struct Row {
        QString version;
        QStringList authentication;
        bool additionalNames;
    };
    const QStringList four{u"AuthType"_s, u"UseUPNFormat"_s, u"WindowsBasic"_s, u"WindowsIntegrated"_s};
    for (const Row& row : {Row{u"2.0"_s, {u"AuthType"_s, u"UseUPNFormat"_s}, false}, Row{u"2.6"_s, four, false},
                           Row{u"2.7"_s, four, false}, Row{u"2.8"_s, four, true}}) {
        SCOPED_TRACE(row.version.toStdString());
        test::VersionedModel old(row.version);
        old.model.SetAuthenticationOptions({});
        EXPECT_EQ(old.server.CallsOf(u"SetAuthenticationOptions"_s).last().in.keys(), row.authentication);
        old.model.CreateSelfSignedCertificate(kSubject, 1);
        old.model.CreateCertificateRequest(kSubject);
        for (const QString& method : {u"CreateSelfSignedCertificate"_s, u"CreateCertificateRequest"_s}) {
            EXPECT_EQ(old.server.CallsOf(method).last().in.contains(u"AdditionalNames"_s), row.additionalNames);
        }
    }
    test::VersionedModel old(u"2.1"_s);
    old.model.CreateSelfSignedCertificate(kSubject, 1);
    EXPECT_TRUE(old.model.GetCertificateInformation().base64Certificate.isEmpty());
}

TEST_F(OperationsTest, ReadsTheCertificateOrThatThereIsNone)
{
    EXPECT_EQ(model.GetCertificateInformation(), CertificateInfo{});
    model.CreateSelfSignedCertificate(kSubject, 3650);
    const CertificateInfo info = model.GetCertificateInformation();
    EXPECT_EQ(info.issuedTo, u"srv1");
    EXPECT_EQ(info.issuedBy, u"srv1");
    EXPECT_EQ(info.validTo.toUTC(), QDateTime(QDate(2035, 12, 30), QTime(), Qt::UTC));
    EXPECT_EQ(info.validFrom.timeSpec(), Qt::LocalTime);
    EXPECT_EQ((QStringList{info.organization, info.organizationUnit, info.countryCode, info.state, info.city}),
              (QStringList{u"o"_s, u"ou"_s, u"DE"_s, u"st"_s, u"c"_s}));
    EXPECT_EQ(info.base64Certificate, u"self-signed");
}

TEST_F(OperationsTest, KeepsListsOfWindowsAccounts)
{
    server.data.repositories = {{.name = u"r"_s}};
    const QStringList first{u"S-1-5-21-2"_s, u"S-1-22-1-1000"_s};
    const QStringList second{u"S-1-1"_s};
    model.SetServerAdmins(first);
    model.SetRepositorySupervisors(second);
    model.SetReplicationPartners({});
    EXPECT_EQ(model.GetServerAdmins(), first);
    EXPECT_EQ(model.GetRepositorySupervisors(), second);
    EXPECT_EQ(model.GetReplicationPartners(), QStringList{});
    EXPECT_EQ(server.data.supervisors, second);
    EXPECT_EQ(server.CallsOf(u"GetReplicationPartners"_s).last().path, kQdfsService);
    model.SetDelegationSettings(u"r"_s, {true, first});
    model.SetReplicationSettings(u"r"_s, {false, second});
    EXPECT_EQ(model.GetDelegationSettings(u"r"_s), (RoleSettings{true, first}));
    EXPECT_EQ(model.GetReplicationSettings(u"r"_s), (RoleSettings{false, second}));
    EXPECT_EQ(server.data.repositories.first().delegation, (test::StandInRole{true, first}));
    EXPECT_TRUE(log.isEmpty());
}

} // namespace

} // namespace quenvolta
