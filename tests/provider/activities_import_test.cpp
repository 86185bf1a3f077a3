#include "activities_fixture.h"
#include "provider/activities/running_activities.h"

#include <sys/stat.h>

namespace quenvolta
{

namespace
{

constexpr int kCopy = 0;
constexpr int kDump = 1;
// Takes many times longer to load than a test needs to step in.
constexpr int kVeryMany = 50'000;

TEST_F(ActivityTest, OtherCallsAreAnsweredWhileADumpIsLoaded)
{
    const QString dump = WriteDump(u"dump"_s, 400);
    MakeRepository(u"present"_s);
    const WbemCallResultPtr import = StartImport(u"loaded"_s, dump, kDump);
    HRESULT status = S_OK;
    HRESULT code = WBEM_S_TIMEDOUT;
    qint64 longestPoll = 0;
    int answered = 0;
    while (code == WBEM_S_TIMEDOUT) {
        WbemObjectPtr object;
        ASSERT_EQ(m_services->GetObject(u"Quenvolta_Repository.Name=\"present\""_s, 0, nullptr, &object), S_OK);
        QElapsedTimer poll;
        poll.start();
        code = import->GetCallStatus(0, &status);
        longestPoll = std::max(longestPoll, poll.elapsed());
        if (code == WBEM_S_TIMEDOUT && !HiddenNames().isEmpty()) {
            ++answered;
            for (const RepositoryRecord& record : m_store.List()) // only what is whole
                EXPECT_EQ(record.youngestRevision, record.name == u"present" ? 0U : 400U);
        }
    }
    EXPECT_EQ(code, S_OK);
    EXPECT_EQ(status, S_OK);
    EXPECT_GE(answered, 10);
    EXPECT_LT(longestPoll, 500);

    EXPECT_EQ(m_store.Read(u"loaded"_s).youngestRevision, 400U);
    EXPECT_EQ(Run(u"svn"_s, {u"cat"_s, UrlOf(u"loaded"_s) + u"/file"_s}), u"revision 400\n"_s);
    EXPECT_EQ(Run(u"svnlook"_s, {u"uuid"_s, PathOf(u"loaded"_s)}).trimmed(), u"7bf7a5ef-cabf-0310-b7d4-93df341afa7e"_s);
    Run(u"svnadmin"_s, {u"verify"_s, u"-q"_s, PathOf(u"loaded"_s)});
    EXPECT_TRUE(HiddenNames().isEmpty());
    EXPECT_TRUE(ChildrenOf(Provider()).isEmpty());
}

TEST_F(ActivityTest, ACancelledImportEndsAndLeavesNothing)
{
    const QString dump = WriteDump(u"dump"_s, kVeryMany);
    const QString id = NewGuid().toString();
    const WbemCallResultPtr import = StartImport(u"loaded"_s, dump, kDump, id);
    const pid_t job = JobInTheMiddle();
    // The identifier is taken, and no other one names it.
    EXPECT_EQ(EndOf(StartImport(u"second"_s, dump, kDump, id.toLower())), WBEM_E_ALREADY_EXISTS);
    EXPECT_EQ(Cancel(NewGuid().toString()), WBEM_E_NOT_FOUND);
    EXPECT_EQ(Cancel({}), WBEM_E_NOT_FOUND);
    EXPECT_EQ(ChildrenOf(Provider()), QList<pid_t>{job});

    EXPECT_EQ(Cancel(id.toLower()), S_OK);
    Cancel(id); // pressed twice: it is there still, or ended meanwhile
    EXPECT_EQ(EndOf(import), WBEM_E_CALL_CANCELLED);
    EXPECT_FALSE(ErrorText().isEmpty());
    EXPECT_TRUE(IsGone(job));
    EXPECT_TRUE(HiddenNames().isEmpty());
    EXPECT_FALSE(m_store.Exists(u"loaded"_s));
    EXPECT_EQ(Cancel(id), WBEM_E_NOT_FOUND);
    EXPECT_EQ(Import(u"loaded"_s, WriteDump(u"short"_s, 3), kDump), S_OK);
}

TEST_F(ActivityTest, NothingIsLeftWhenTheProviderOrItsJobIsKilled)
{
    const QString dump = m_outside + u"/dump"_s;
    for (const bool jobToo : {false, true}) {
        WriteDump(u"dump"_s, kVeryMany);
        const QUuid request = QUuid::createUuid();
        const WbemCallResultPtr import = StartImport(u"loaded"_s, dump, kDump, {}, request);
        const pid_t job = JobInTheMiddle();
        const pid_t provider = Provider();
        ::kill(provider, SIGSTOP); // neither may notice the other's end
        if (jobToo)
            ::kill(job, SIGKILL);
        ::kill(provider, SIGKILL);
        EXPECT_EQ(EndOf(import), RPC_E_DISCONNECTED);
        EXPECT_TRUE(WaitFor([job] { return IsGone(job); }));
        EXPECT_EQ(HiddenNames().size(), jobToo ? 1 : 0); // alone, it cleaned up after itself
        Connect();
        EXPECT_TRUE(HiddenNames().isEmpty());
        EXPECT_TRUE(m_store.List().empty());

        // The console repeats what it got no answer to.
        WriteDump(u"dump"_s, 5);
        EXPECT_EQ(EndOf(StartImport(u"loaded"_s, dump, kDump, {}, request)), S_OK);
        EXPECT_EQ(m_store.Read(u"loaded"_s).youngestRevision, 5U);
        m_store.Delete(u"loaded"_s);
    }

    // A job that ends alone is a failed call, and its provider cleans up.
    WriteDump(u"dump"_s, kVeryMany);
    WbemCallResultPtr import = StartImport(u"loaded"_s, dump, kDump);
    ::kill(JobInTheMiddle(), SIGKILL);
    EXPECT_EQ(EndOf(import), WBEM_E_FAILED);
    EXPECT_TRUE(ErrorText(u"Details"_s).contains(QString::number(SIGKILL)));
    EXPECT_TRUE(HiddenNames().isEmpty());

    // When the console leaves, everything ends.
    import = StartImport(u"loaded"_s, dump, kDump);
    const pid_t job = JobInTheMiddle();
    const pid_t provider = Provider();
    import.reset();
    Disconnect();
    EXPECT_TRUE(IsGone(provider));
    EXPECT_TRUE(WaitFor([job] { return IsGone(job); }));
    EXPECT_TRUE(HiddenNames().isEmpty());
    EXPECT_TRUE(m_store.List().empty());
}

TEST_F(ActivityTest, AFinishedImportThatIsRepeatedGetsItsAnswerAgain)
{
    const QString dump = WriteDump(u"dump"_s, 3);
    const QUuid request = QUuid::createUuid();
    ASSERT_EQ(EndOf(StartImport(u"loaded"_s, dump, kDump, {}, request)), S_OK);
    QFile::remove(dump);
    Connect();
    EXPECT_EQ(EndOf(StartImport(u"loaded"_s, dump, kDump, {}, request)), S_OK);
    // The provider that ended before it could note the answer has left its mark in the repository.
    QFile::remove(m_data + u"/requests.db"_s);
    Connect();
    EXPECT_EQ(EndOf(StartImport(u"loaded"_s, dump, kDump, {}, request)), S_OK);
    EXPECT_EQ(Import(u"loaded"_s, dump, kDump), WBEM_E_ALREADY_EXISTS);
}

TEST_F(ActivityTest, ACopyIsTheSameRepositoryAtAnotherPlace)
{
    const QString source = m_outside + u"/source"_s;
    Run(u"svnadmin"_s, {u"create"_s, source});
    Run(u"svn"_s, {u"mkdir"_s, u"-q"_s, u"-m"_s, u"m"_s, u"file://"_s + source + u"/trunk"_s});
    Write(source + u"/hooks/start-commit"_s, "#!/bin/sh\nexit 0\n");
    QFile::setPermissions(source + u"/hooks/start-commit"_s, QFile::ReadOwner | QFile::ExeOwner);
    Write(source + u"/quenvolta-request"_s, "of the original");
    QFile::link(u"start-commit"_s, source + u"/hooks/pre-lock"_s);
    QFile::link(m_outside + u"/nowhere"_s, source + u"/conf/dangling"_s);
    QFile::link(source, m_outside + u"/link"_s);

    ASSERT_EQ(Import(u"copy"_s, m_outside + u"/./link/"_s, kCopy), S_OK) << ErrorText().toStdString();
    EXPECT_EQ(Run(u"svnlook"_s, {u"uuid"_s, PathOf(u"copy"_s)}), Run(u"svnlook"_s, {u"uuid"_s, source}));
    EXPECT_EQ(Run(u"svn"_s, {u"ls"_s, UrlOf(u"copy"_s)}), u"trunk/\n"_s);
    EXPECT_TRUE(QFile::exists(PathOf(u"copy"_s) + u"/hooks/start-commit"_s));
    EXPECT_EQ(QFile::symLinkTarget(PathOf(u"copy"_s) + u"/hooks/pre-lock"_s),
              PathOf(u"copy"_s) + u"/hooks/start-commit"_s);
    EXPECT_EQ(QFile::permissions(PathOf(u"copy"_s)) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    Run(u"svn"_s, {u"mkdir"_s, u"-q"_s, u"-m"_s, u"m"_s, UrlOf(u"copy"_s) + u"/branches"_s});
    EXPECT_EQ(Run(u"svnlook"_s, {u"youngest"_s, source}), u"1\n"_s);
}

TEST_F(ActivityTest, WhatCannotBeImportedIsRefusedAndLeavesNothing)
{
    MakeRepository(u"present"_s);
    const QString dump = WriteDump(u"dump"_s, 50);
    QFile file(dump);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    const auto broken = [this](const QString& name, const QByteArray& content) {
        Write(m_outside + u'/' + name, content);
        return m_outside + u'/' + name;
    };
    const QString berkeley = m_outside + u"/berkeley"_s;
    Run(u"svnadmin"_s, {u"create"_s, berkeley});
    Write(berkeley + u"/db/fs-type"_s, "bdb\n");
    const QString unfinished = m_root + u"/.creating-00112233445566778899aabbccddeeff"_s;
    Run(u"svnadmin"_s, {u"create"_s, unfinished});
    const QString around = m_temporary.path();
    ASSERT_EQ(::mkfifo((m_outside + u"/fifo"_s).toUtf8().constData(), S_IRUSR | S_IWUSR), 0);
    const QStringList before = QDir(m_root).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);

    struct Case {
        QString name;
        QString path;
        int mode;
        HRESULT code;
    };
    const QList<Case> cases{
        {u"new"_s, broken(u"empty"_s, {}), kDump, WBEM_E_FAILED},
        {u"new"_s, broken(u"noise"_s, QByteArray(5000, 'x')), kDump, WBEM_E_FAILED},
        {u"new"_s, broken(u"cut"_s, whole.left(whole.size() - 20)), kDump, WBEM_E_FAILED},
        {u"new"_s, broken(u"wrong"_s, QByteArray(whole).replace("action: add", "action: eat")), kDump, WBEM_E_FAILED},
        {u"new"_s, PathOf(u"present"_s), kDump, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, m_outside + u"/fifo"_s, kDump, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, m_outside + u"/missing"_s, kDump, WBEM_E_NOT_FOUND},
        {u"new"_s, m_outside + u"/missing"_s, kCopy, WBEM_E_NOT_FOUND},
        {u"new"_s, m_outside, kCopy, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, dump, kCopy, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, berkeley, kCopy, WBEM_E_NOT_SUPPORTED},
        {u"new"_s, unfinished, kCopy, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, u"root/present"_s, kCopy, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, u"\\\\server\\share"_s, kCopy, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, QString(), kCopy, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, dump + QChar(u'\0'), kDump, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, u"/"_s + QString(5000, u'x'), kDump, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, dump, 2, WBEM_E_INVALID_PARAMETER},
        {u"new"_s, dump, -1, WBEM_E_INVALID_PARAMETER},
        {u"../new"_s, dump, kDump, WBEM_E_INVALID_PARAMETER},
        {QString(), dump, kDump, WBEM_E_INVALID_PARAMETER},
        {u"present"_s, dump, kDump, WBEM_E_ALREADY_EXISTS},
        {u"present"_s, PathOf(u"present"_s), kCopy, WBEM_E_ALREADY_EXISTS},
    };
    for (const Case& each : cases) {
        const std::string shown = each.name.toStdString() + " " + each.path.left(100).toStdString();
        EXPECT_EQ(Import(each.name, each.path, each.mode), each.code) << shown;
        EXPECT_FALSE(ErrorText().isEmpty()) << shown;
    }
    // A repository around the folder of the repositories would be copied into itself.
    Run(u"svnadmin"_s, {u"create"_s, around + u"/whole"_s});
    for (const QString& part : {u"format"_s, u"db"_s, u"locks"_s, u"hooks"_s, u"conf"_s})
        ASSERT_TRUE(QFile::rename(around + u"/whole/"_s + part, around + u'/' + part));
    EXPECT_EQ(Import(u"new"_s, around, kCopy), WBEM_E_INVALID_PARAMETER);

    EXPECT_EQ(QDir(m_root).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), before);
    EXPECT_EQ(m_store.Read(u"present"_s).youngestRevision, 0U);
}

TEST_F(ActivityTest, TheKindOfASourceIsTold)
{
    Run(u"svnadmin"_s, {u"create"_s, m_outside + u"/plain"_s});
    QFile::link(m_outside + u"/plain"_s, m_outside + u"/link"_s);
    Run(u"svnadmin"_s, {u"create"_s, m_outside + u"/broken"_s});
    Write(m_outside + u"/broken/db/format"_s, "nonsense\n");
    const auto kindOf = [this](const QString& path, WbemObjectPtr* out = nullptr) {
        return Call(m_repositories, u"GetImportSourceType"_s, {{u"Path"_s, path}}, out);
    };
    for (const QString& path : {m_outside + u"/plain"_s, m_outside + u"/plain/"_s, m_outside + u"/link"_s}) {
        WbemObjectPtr out;
        ASSERT_EQ(kindOf(path, &out), S_OK) << path.toStdString();
        Variant kind;
        out->Get(u"ReturnValue"_s, &kind, nullptr);
        EXPECT_EQ(kind, Variant(std::uint32_t{0}));
    }
    EXPECT_EQ(kindOf(m_outside), WBEM_E_INVALID_PARAMETER);
    EXPECT_TRUE(ErrorText().contains(m_outside)); // the whole path, however long
    EXPECT_EQ(kindOf(m_outside + u"/plain/format"_s), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(kindOf(m_outside + u"/nothing"_s), WBEM_E_NOT_FOUND);
    EXPECT_EQ(kindOf(u"plain"_s), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(kindOf(m_outside + u"/broken"_s), WBEM_E_FAILED);
}

TEST_F(ActivityTest, AJobThatDoesNotStopIsKilled)
{
    using namespace std::chrono_literals;
    RunningActivities activities({ProviderProgram(), {u"--job"_s, u"--data"_s, m_data}, 50ms});
    CallMessage call;
    call.operation = Operation::ExecMethod;
    call.requestId = QUuid::createUuid();
    call.namespaceName = u"Quenvolta"_s;
    call.target = m_repositories;
    call.method = u"ImportRepository"_s;
    call.input =
        Input(m_repositories, call.method,
              {{u"Name"_s, u"loaded"_s}, {u"ImportPath"_s, WriteDump(u"dump"_s, kVeryMany)}, {u"ImportMode"_s, kDump}});
    call.context = CreateWbemContext();
    call.context->SetValue(u"ActivityId"_s, 0, u"{stuck}"_s);
    Disconnect();
    activities.Start(call);
    ASSERT_TRUE(WaitFor([this, &activities] { return activities.Advance().empty() && HiddenNames().size() == 1; }));
    const pid_t job = ChildrenOf(::getpid()).value(0);
    ::kill(job, SIGSTOP);
    EXPECT_TRUE(activities.Cancel(u"{STUCK}"_s));
    EXPECT_GE(activities.PollTimeout(), 0);
    std::vector<RunningActivities::Ended> ended;
    EXPECT_TRUE(WaitFor([&] {
        if (ended.empty())
            ended = activities.Advance();
        return !ended.empty();
    }));
    ASSERT_EQ(ended.size(), 1U);
    EXPECT_EQ(ended[0].result.code, WBEM_E_CALL_CANCELLED);
    EXPECT_TRUE(ended[0].leftThings);
    EXPECT_TRUE(ChildrenOf(::getpid()).isEmpty());

    RunningActivities missing({m_outside + u"/no-program"_s, {}, 50ms});
    EXPECT_EQ(ErrorOf([&] { missing.Start(call); }).Code(), WBEM_E_FAILED);
    call.context->SetValue(u"ActivityId"_s, 0, std::int32_t{7});
    EXPECT_EQ(ErrorOf([&] { activities.Start(call); }).Code(), WBEM_E_INVALID_PARAMETER);
}

} // namespace

} // namespace quenvolta
