#include "channel_fixture.h"
#include "platform/channel/channel_failure.h"
#include "platform/channel/channel_texts.h"
#include "platform/channel/process_transport.h"

#include <QStringList>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

/// An executable script in a folder.
void WriteScript(const QString& path, const QByteArray& body)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + body);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

struct Fault {
    const char* mode;
    HRESULT code;
    ChannelText text;
    const char* words = ""; // which the text must hold beside the sentence
};

// The part of a sentence before its first insert.
std::string Beginning(ChannelText text)
{
    return ChannelTextOf(text).section(u'%', 0, 0).toStdString();
}

class ChannelFaults : public ChannelTest
{
protected:
    void ExpectText(const Fault& fault)
    {
        const std::string text = ErrorText();
        EXPECT_EQ(text.substr(0, Beginning(fault.text).size()), Beginning(fault.text));
        EXPECT_NE(text.find(fault.words), std::string::npos) << text;
        EXPECT_LE(text.size(), 2500U);
    }
};

} // namespace

TEST_F(ChannelFaults, WhileConnecting)
{
    const Fault kFaults[]{
        {"exit-127", WBEM_E_INVALID_NAMESPACE, ChannelText::NotInstalled},
        {"exit-126", E_ACCESSDENIED, ChannelText::NotExecutable},
        {"dies-before-hello", WBEM_E_PROVIDER_LOAD_FAILURE, ChannelText::EndedBeforeHello, "\nout of cheese"},
        {"much-noise", RPC_E_INVALID_DATA, ChannelText::InvalidData, "xxxxx"},
        {"other-version", RPC_E_VERSION_MISMATCH, ChannelText::VersionMismatch, "version 2 of"},
        {"no-hello", RPC_E_INVALID_DATA, ChannelText::InvalidData},
        {"no-such-mode", WBEM_E_PROVIDER_LOAD_FAILURE, ChannelText::EndedBeforeHello},
    };
    for (const Fault& fault : kFaults) {
        SCOPED_TRACE(fault.mode);
        pool.reset();
        HRESULT code = S_OK;
        EXPECT_FALSE(Connect(QString::fromLatin1(fault.mode), &code));
        EXPECT_EQ(code, fault.code);
        ExpectText(fault);
        EXPECT_TRUE(PeerIsGone());
    }
}

TEST_F(ChannelFaults, DuringACall)
{
    const Fault kFaults[]{
        {"dies-on-call", RPC_E_DISCONNECTED, ChannelText::ConnectionLost, "\nlast words"},
        {"closes-output", RPC_E_DISCONNECTED, ChannelText::ConnectionLost},
        {"frame-too-long", RPC_E_INVALID_DATA, ChannelText::InvalidData, "length"},
        {"frame-empty", RPC_E_INVALID_DATA, ChannelText::InvalidData, "length"},
        {"garbage", RPC_E_INVALID_DATA, ChannelText::InvalidData},
        {"too-deep", RPC_E_INVALID_DATA, ChannelText::InvalidData, "nested"},
        {"too-many-items", RPC_E_INVALID_DATA, ChannelText::InvalidData, "items"},
        {"wrong-call-id", RPC_E_INVALID_DATA, ChannelText::InvalidData},
        {"wrong-direction", RPC_E_INVALID_DATA, ChannelText::InvalidData},
        {"rows-for-object", RPC_E_INVALID_DATA, ChannelText::InvalidData},
    };
    for (const Fault& fault : kFaults) {
        SCOPED_TRACE(fault.mode);
        pool.reset();
        const WbemServicesPtr services = Connect(QString::fromLatin1(fault.mode));
        ASSERT_TRUE(services);
        WbemObjectPtr object;
        EXPECT_EQ(services->GetObject(u"x"_s, 0, nullptr, &object), fault.code);
        ExpectText(fault);
        EXPECT_TRUE(PeerIsGone());
        // Whatever it was, from now on the connection is gone, and may be made anew.
        EXPECT_EQ(services->GetObject(u"x"_s, 0, nullptr, &object), RPC_E_DISCONNECTED);
        EXPECT_FALSE(object);
    }
}

TEST_F(ChannelFaults, AnAnswerWithoutItsObjectIsNoAnswer)
{
    const WbemServicesPtr services = Connect(u"server"_s);
    WbemObjectPtr object;
    EXPECT_EQ(services->GetObject(u"nothing"_s, 0, nullptr, &object), RPC_E_INVALID_DATA);
}

TEST_F(ChannelFaults, AListThatBreaksOffGivesWhatCameAndThenTheFailure)
{
    const WbemServicesPtr services = Connect(u"dies-mid-list"_s);
    EnumWbemClassObjectPtr list;
    ASSERT_EQ(services->CreateInstanceEnum(u"Item"_s, 0, nullptr, &list), S_OK);
    QList<WbemObjectPtr> objects;
    EXPECT_EQ(list->Next(WBEM_INFINITE, 100000, &objects), RPC_E_DISCONNECTED);
    EXPECT_EQ(objects.size(), 600);
    EXPECT_EQ(list->Next(0, 1, &objects), RPC_E_DISCONNECTED);
}

TEST_F(ChannelFaults, APendingCallLearnsThatTheProviderIsGone)
{
    const WbemServicesPtr services = Connect(u"answers-in-reverse"_s);
    WbemCallResultPtr result;
    ASSERT_EQ(services->ExecMethod(u"x"_s, u"m"_s, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, nullptr, nullptr, &result),
              S_OK);
    HRESULT status = S_OK;
    EXPECT_EQ(result->GetCallStatus(0, &status), WBEM_S_TIMEDOUT);
    ::kill(PeerPid(), SIGKILL);
    EXPECT_EQ(result->GetCallStatus(WBEM_INFINITE, &status), RPC_E_DISCONNECTED);
    WbemObjectPtr out;
    EXPECT_EQ(result->GetResultObject(0, &out), RPC_E_DISCONNECTED);
}

TEST_F(ChannelFaults, SilenceEndsInTimeAndTheChildWithIt)
{
    options.localHelloTimeout = 200ms;
    for (const QString& mode : {u"silence"_s, u"stubborn"_s}) {
        SCOPED_TRACE(mode.toStdString());
        pool.reset();
        HRESULT code = S_OK;
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(Connect(mode, &code));
        EXPECT_EQ(code, RPC_S_SERVER_UNAVAILABLE);
        EXPECT_EQ(ErrorText().substr(0, 20), Beginning(ChannelText::NoAnswerInTime).substr(0, 20));
        EXPECT_TRUE(PeerIsGone());
        EXPECT_LT(timer.elapsed(), 10000);
    }
}

TEST_F(ChannelFaults, NoiseOfAShellAndAFloodOfErrorOutputAreSurvived)
{
    WbemObjectPtr object;
    EXPECT_EQ(Connect(u"noise"_s)->GetObject(u"x"_s, 0, nullptr, &object), S_OK);
    pool.reset();
    const WbemServicesPtr services = Connect(u"chatty"_s);
    EXPECT_EQ(services->GetObject(u"x"_s, 0, nullptr, &object), S_OK);
    EXPECT_EQ(services->GetObject(u"x"_s, 0, nullptr, &object), RPC_E_DISCONNECTED);
    const std::string text = ErrorText();
    EXPECT_TRUE(QString::fromStdString(text).endsWith("the end of it"_L1)) << text;
    EXPECT_LT(text.size(), 2500U);
}

TEST_F(ChannelFaults, AProviderThatCannotBeStarted)
{
    HRESULT code = S_OK;
    options.localProgram = Path("nowhere");
    EXPECT_FALSE(ConnectTo(u"."_s, &code));
    EXPECT_EQ(code, WBEM_E_INVALID_NAMESPACE);

    WriteScript(Path("plain"), "exit 0\n");
    QFile::setPermissions(Path("plain"), QFile::ReadOwner);
    for (const QString& program : {Path("plain"), folder.path()}) {
        pool.reset();
        options.localProgram = program;
        EXPECT_FALSE(ConnectTo(u""_s, &code));
        EXPECT_EQ(code, E_ACCESSDENIED);
        EXPECT_NE(ErrorText(), "");
    }

    pool.reset();
    options.sshProgram = u"no-such-ssh"_s;
    EXPECT_FALSE(ConnectTo(u"server"_s, &code));
    EXPECT_EQ(code, RPC_S_SERVER_UNAVAILABLE);
    EXPECT_NE(ErrorText().find("no-such-ssh"), std::string::npos);
}

TEST_F(ChannelFaults, SshsOwnWordsTellWhyItFailed)
{
    struct SshEnd {
        const char* words;
        int status;
        HRESULT code;
        const char* before = "";
    };
    const SshEnd kEnds[]{
        {"ssh: connect to host srv port 22: Connection refused", 255, RPC_S_SERVER_UNAVAILABLE},
        {"ssh: Could not resolve hostname srv: Name or service not known", 255, RPC_S_SERVER_UNAVAILABLE},
        {"root@srv: Permission denied (publickey,password).", 255, E_ACCESSDENIED},
        {"Host key verification failed.", 255, E_ACCESSDENIED},
        {"Received disconnect from 10.0.0.1 port 22:2: Too many authentication failures", 255, E_ACCESSDENIED},
        {"bash: line 1: quenvolta-provider: command not found", 127, WBEM_E_INVALID_NAMESPACE},
        {"bash: line 1: quenvolta-provider: Permission denied", 126, E_ACCESSDENIED},
        {"This account is currently not available.", 1, WBEM_E_PROVIDER_LOAD_FAILURE},
        {"Segmentation fault", 139, WBEM_E_PROVIDER_LOAD_FAILURE},
        {"", 255, WBEM_E_PROVIDER_LOAD_FAILURE}, // a signal ended what ssh had started
        {"Connection reset", 255, WBEM_E_PROVIDER_LOAD_FAILURE, "echo Welcome\n"},
    };
    options.sshProgram = Path("ssh");
    for (const SshEnd& end : kEnds) {
        SCOPED_TRACE(end.words);
        WriteScript(options.sshProgram, QByteArray(end.before) + "echo '" + end.words + "' >&2\nexit " +
                                            QByteArray::number(end.status) + '\n');
        HRESULT code = S_OK;
        EXPECT_FALSE(ConnectTo(u"srv"_s, &code));
        EXPECT_EQ(code, end.code);
        EXPECT_NE(ErrorText().find(end.words), std::string::npos);
    }
}

TEST_F(ChannelFaults, NothingButAHostReachesTheCommandLineOfSsh)
{
    options.sshProgram = Path("ssh");
    options.sshArguments = QStringList{u"-F"_s, u"some config"_s};
    WriteScript(options.sshProgram, "printf '%s\\n' \"$@\" >'" + Path("arguments").toUtf8() + "'\nexec '" +
                                        PeerProgram().toUtf8() + "' --stdio server\n");
    HRESULT code = S_OK;
    const QString long256(256, u'a');
    for (const QString& hostile : {u"-oProxyCommand=touch x"_s,
                                   u"-srv"_s,
                                   u"a b"_s,
                                   u" srv"_s,
                                   u"srv\n"_s,
                                   u"srv\n-oX"_s,
                                   u"a'b"_s,
                                   u"a\"b"_s,
                                   u"a$(id)"_s,
                                   u"a`id`"_s,
                                   u"a%h"_s,
                                   u"a;id"_s,
                                   u"a|id"_s,
                                   u"a&b"_s,
                                   u"a>b"_s,
                                   u"a*"_s,
                                   u"a#b"_s,
                                   u"a/b"_s,
                                   u"a\\b"_s,
                                   u"a..b"_s,
                                   u".a"_s,
                                   u"a."_s,
                                   u"a-.b"_s,
                                   u"b.-a"_s,
                                   u"\u00E4.example"_s,
                                   QString(u'a') + QChar(0),
                                   long256,
                                   QString(64, u'a'),
                                   u"@srv"_s,
                                   u"-l@srv"_s,
                                   u"us er@srv"_s,
                                   u"us$er@srv"_s,
                                   u"a@b@c"_s,
                                   u"srv:"_s,
                                   u"srv:0"_s,
                                   u"srv:65536"_s,
                                   u"srv:22x"_s,
                                   u"srv:-1"_s,
                                   u":22"_s,
                                   u"::1"_s,
                                   u"[::1"_s,
                                   u"[]"_s,
                                   u"[::g]"_s,
                                   u"[1.2.3.4]"_s,
                                   u"[fe80::1%eth0]"_s,
                                   u"[::1]x"_s,
                                   u".."_s}) {
        EXPECT_FALSE(ConnectTo(hostile, &code)) << hostile.toStdString();
        EXPECT_EQ(code, HR_INVALID_COMPUTER_NAME) << hostile.toStdString();
        EXPECT_FALSE(QFile::exists(Path("arguments"))) << hostile.toStdString();
    }

    struct Good {
        const char* typed;
        QStringList options;
        QString host;
    };
    const Good kGood[]{
        {"srv", {}, u"srv"_s},
        {"my_alias-2.Example.org", {}, u"my_alias-2.Example.org"_s},
        {"10.0.0.1:2222", {u"-p"_s, u"2222"_s}, u"10.0.0.1"_s},
        {"an.admin@srv:22", {u"-p"_s, u"22"_s, u"-l"_s, u"an.admin"_s}, u"srv"_s},
        {"root@[fe80::1]:2022", {u"-p"_s, u"2022"_s, u"-l"_s, u"root"_s}, u"fe80::1"_s},
    };
    for (const Good& good : kGood) {
        SCOPED_TRACE(good.typed);
        EXPECT_TRUE(ConnectTo(QString::fromLatin1(good.typed), &code));
        const QStringList expected = QStringList{u"-F"_s,
                                                 u"some config"_s,
                                                 u"-T"_s,
                                                 u"-o"_s,
                                                 u"ServerAliveInterval=15"_s,
                                                 u"-o"_s,
                                                 u"ServerAliveCountMax=2"_s,
                                                 u"-o"_s,
                                                 u"ConnectTimeout=15"_s} +
                                     good.options +
                                     QStringList{u"--"_s, good.host, u"quenvolta-provider"_s, u"--stdio"_s, u""_s};
        EXPECT_EQ(QString::fromUtf8(Contents("arguments")).split(u'\n'), expected);
    }
}

TEST_F(ChannelFaults, ErrorOutputIsReadWhileNothingIsAsked)
{
    ProcessTransport transport(u"/bin/sh"_s, {u"-c"_s, u"head -c 1000000 /dev/zero >&2; : >\"$DONE\"; cat"_s},
                               {{u"DONE"_s, Path("done")}});
    // The child stalls unless the event loop empties its pipe.
    QDeadlineTimer deadline(30s);
    while (!QFile::exists(Path("done")) && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
    EXPECT_TRUE(QFile::exists(Path("done")));
    EXPECT_GE(transport.ErrorOutput().size(), 64 * 1024);
    EXPECT_LE(transport.ErrorOutput().size(), 192 * 1024);
    EXPECT_EQ(transport.End(30s).how, TransportEnd::How::Exited);
    EXPECT_EQ(transport.ProcessId(), 0);
}

TEST(ChannelFailure, APeersWordsBecomePlainText)
{
    EXPECT_EQ(PlainWords("\x1B[1;31mred\x1B[0m\r\nbell\a\ttab\x7F \xE2\x80\xAEturned\xFF\n\n"),
              u"red\nbell tab turned\uFFFD"_s);
    const QString words = PlainWords(QByteArray(5000, 'a') + "end");
    EXPECT_EQ(words.size(), 2000);
    EXPECT_TRUE(words.endsWith("end"_L1));
}

} // namespace quenvolta
