#pragma once

#include "platform/channel/channel_transport.h"
#include "platform/unique_fd.h"

#include <QMap>
#include <QProcess>
#include <QSocketNotifier>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace quenvolta
{

/// A child process in a session of its own, spoken to on its standard input and output. Needs no event loop. Its error
/// output is read at every wait, and by the event loop when one runs, so that the child never stalls on it.
///
/// The pipes are this class's own, because QProcess doesn't tell when the output was closed by a child that lives on.
class ProcessTransport final : public IChannelTransport
{
public:
    /// Starts the program; a failure to do so shows as an end that was reached at once.
    ProcessTransport(const QString& program, const QStringList& arguments, const QMap<QString, QString>& environment);
    ~ProcessTransport() override;

    void Send(QByteArrayView bytes) override;
    void Flush(QDeadlineTimer deadline) override;
    QByteArray Receive() override;
    void Wait(QDeadlineTimer deadline) override;
    bool IsOpen() const override { return m_output.IsOpen(); }
    TransportEnd End(std::chrono::milliseconds patience) override;
    QByteArray ErrorOutput() const override { return m_errorOutput; }

    /// The child's process id; 0 when it runs no more or never did.
    qint64 ProcessId() const { return m_process.processId(); }

private:
    bool OpenPipes();
    void Start(const QString& program, const QStringList& arguments);
    void WriteSome();
    /// Reads once; false when there was nothing.
    bool ReadErrorOutput();
    /// Polls once. True when something happened that a wait for input is interested in.
    bool Poll(std::chrono::milliseconds timeout, bool forInput);
    bool HasFinished();
    bool WaitForFinished(QDeadlineTimer deadline);

    QProcess m_process;
    UniqueFd m_input;  // the child's standard input, our end
    UniqueFd m_output; // and so on
    UniqueFd m_error;
    UniqueFd m_childInput;
    UniqueFd m_childOutput;
    UniqueFd m_childError;
    std::unique_ptr<QSocketNotifier> m_errorNotifier;
    QByteArray m_toSend;
    qsizetype m_sent = 0;
    QByteArray m_errorOutput;
    std::optional<TransportEnd> m_end;
};

} // namespace quenvolta
