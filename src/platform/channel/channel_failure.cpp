#include "platform/channel/channel_failure.h"

#include "platform/channel/protocol.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kMaxWords = 2000;

// Exit statuses of a shell (or of ssh, which passes them on).
constexpr int kCommandNotFound = 127;
constexpr int kCommandNotExecutable = 126;
/// ssh's own failure, whatever it was.
constexpr int kSshFailed = 255;

struct SshRefusal {
    QByteArrayView words;
    ChannelText text;
};

/// What ssh says when it got to the computer but wasn't let in, or didn't trust it. The first one that it said counts.
constexpr std::array kSshRefusals{
    SshRefusal{"REMOTE HOST IDENTIFICATION HAS CHANGED", ChannelText::HostKeyChanged},
    SshRefusal{"Host key verification failed", ChannelText::HostKeyNotTrusted},
    SshRefusal{"Permission denied (", ChannelText::AccessRefused},
    SshRefusal{"Too many authentication failures", ChannelText::AccessRefused},
};

struct EndMeaning {
    HRESULT code;
    ChannelText text;
};

/// The provider was run, and came to no answer.
constexpr EndMeaning kBroken{WBEM_E_PROVIDER_LOAD_FAILURE, ChannelText::EndedBeforeHello};

/// What a connection that came to nothing left behind.
struct Remains {
    const QByteArray& noise; ///< came instead of the provider's first message
    const QByteArray& errorOutput;
};

/// With its own status ssh passes on, too, that a signal ended the provider. It says nothing then; and when something
/// came from a login shell, it had let the console in.
bool HasLoggedIn(const Remains& remains)
{
    return !remains.noise.isEmpty() || PlainWords(remains.errorOutput).isEmpty();
}

EndMeaning MeaningOfExit(int exitCode, bool remote, const Remains& remains)
{
    if (exitCode == kCommandNotFound)
        return {WBEM_E_INVALID_NAMESPACE, ChannelText::NotInstalled};
    if (exitCode == kCommandNotExecutable)
        return {E_ACCESSDENIED, ChannelText::NotExecutable};
    if (!remote || exitCode != kSshFailed || HasLoggedIn(remains))
        return kBroken;
    for (const SshRefusal& refusal : kSshRefusals) {
        if (remains.errorOutput.contains(refusal.words))
            return {E_ACCESSDENIED, refusal.text};
    }
    return {RPC_S_SERVER_UNAVAILABLE, ChannelText::HostUnreachable};
}

EndMeaning MeaningOf(const TransportEnd& end, bool remote, const Remains& remains)
{
    switch (end.how) {
    case TransportEnd::How::Exited:
        return MeaningOfExit(end.exitCode, remote, remains);
    case TransportEnd::How::NotFound:
        return remote ? EndMeaning{RPC_S_SERVER_UNAVAILABLE, ChannelText::SshMissing}
                      : EndMeaning{WBEM_E_INVALID_NAMESPACE, ChannelText::NotInstalled};
    case TransportEnd::How::Forbidden:
        return remote ? EndMeaning{RPC_S_SERVER_UNAVAILABLE, ChannelText::SshMissing}
                      : EndMeaning{E_ACCESSDENIED, ChannelText::NotExecutable};
    case TransportEnd::How::Killed:
        break;
    }
    return kBroken;
}

QString WithWords(const QString& sentence, const QByteArray& words)
{
    const QString plain = PlainWords(words);
    return plain.isEmpty() ? sentence : sentence + u'\n' + plain;
}

QByteArray Joined(const QByteArray& noise, const QByteArray& errorOutput)
{
    return noise.isEmpty() || errorOutput.isEmpty() ? noise + errorOutput : noise + '\n' + errorOutput;
}

} // namespace

QString PlainWords(const QByteArray& words)
{
    static const QRegularExpression kTerminalSequences(u"\\x1B\\[[0-9;?]*[ -/]*[@-~]"_s);
    QString plain = QString::fromUtf8(words);
    plain.remove(kTerminalSequences);
    plain.replace(u'\t', u' ');
    plain.removeIf([](QChar c) {
        const QChar::Category category = c.category();
        return c != u'\n' && (category == QChar::Other_Control || category == QChar::Other_Format);
    });
    plain = plain.trimmed();
    return plain.size() <= kMaxWords ? plain : u'\u2026' + plain.last(kMaxWords - 1);
}

ChannelFailures::ChannelFailures(const ProviderCommand& command)
    : m_command(command)
{
}

QString ChannelFailures::Sentence(ChannelText text) const
{
    return ChannelTextOf(text).arg(m_command.computer);
}

ChannelFailure ChannelFailures::EndedBeforeHello(const TransportEnd& end, const QByteArray& noise,
                                                 const QByteArray& errorOutput) const
{
    const EndMeaning meaning = MeaningOf(end, m_command.remote, {noise, errorOutput});
    QString sentence = Sentence(meaning.text);
    if (meaning.text == ChannelText::SshMissing)
        sentence = sentence.arg(m_command.program);
    return {meaning.code, WithWords(sentence, Joined(noise, errorOutput))};
}

ChannelFailure ChannelFailures::NoAnswerInTime(const QByteArray& noise, const QByteArray& errorOutput) const
{
    const double seconds = std::chrono::duration<double>(m_command.helloTimeout).count();
    return {RPC_S_SERVER_UNAVAILABLE,
            WithWords(Sentence(ChannelText::NoAnswerInTime).arg(seconds), Joined(noise, errorOutput))};
}

ChannelFailure ChannelFailures::Cancelled() const
{
    return {HR_CANCELLED, Sentence(ChannelText::Cancelled)};
}

ChannelFailure ChannelFailures::VersionMismatch(int peersVersion, const QByteArray& errorOutput) const
{
    return {RPC_E_VERSION_MISMATCH,
            WithWords(Sentence(ChannelText::VersionMismatch).arg(peersVersion).arg(kProtocolVersion), errorOutput)};
}

ChannelFailure ChannelFailures::InvalidData(const QString& what, const QByteArray& noise,
                                            const QByteArray& errorOutput) const
{
    return {RPC_E_INVALID_DATA, WithWords(Sentence(ChannelText::InvalidData).arg(what), Joined(noise, errorOutput))};
}

ChannelFailure ChannelFailures::ConnectionLost(const QByteArray& errorOutput) const
{
    return {RPC_E_DISCONNECTED, WithWords(Sentence(ChannelText::ConnectionLost), errorOutput)};
}

} // namespace quenvolta
