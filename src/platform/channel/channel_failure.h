#pragma once

#include "platform/channel/channel_texts.h"
#include "platform/channel/channel_transport.h"
#include "platform/channel/provider_command.h"
#include "platform/hresult.h"

#include <QByteArray>
#include <QString>

namespace quenvolta
{

/// Why a channel can't be used (any more).
struct ChannelFailure {
    HRESULT code = S_OK;
    /// What happened, and the peer's own words.
    QString text;
};

/// Puts the ends of channels into codes and words.
class ChannelFailures
{
public:
    explicit ChannelFailures(const ProviderCommand& command);

    /// The peer ended before its first message. `noise` is what came instead.
    ChannelFailure EndedBeforeHello(const TransportEnd& end, const QByteArray& noise,
                                    const QByteArray& errorOutput) const;
    ChannelFailure NoAnswerInTime(const QByteArray& noise, const QByteArray& errorOutput) const;
    /// The person gave the connection up.
    ChannelFailure Cancelled() const;
    ChannelFailure VersionMismatch(int peersVersion, const QByteArray& errorOutput) const;
    /// `what` says what is wrong with the data.
    ChannelFailure InvalidData(const QString& what, const QByteArray& noise, const QByteArray& errorOutput) const;
    ChannelFailure ConnectionLost(const QByteArray& errorOutput) const;

private:
    QString Sentence(ChannelText text) const;

    ProviderCommand m_command;
};

/// A peer's words as plain text: no control characters but line breaks, no more than the last 2,000 characters.
QString PlainWords(const QByteArray& words);

} // namespace quenvolta
