#pragma once

#include "platform/channel/frame_reader.h"
#include "platform/channel/message.h"
#include "platform/unique_fd.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>
#include <poll.h>
#include <sys/types.h>
#include <vector>

namespace quenvolta
{

/// A process that carries one call out. It is given the call as the console's channel would give it, and answers in the
/// same way: a magic line, then the Result. Nothing here waits unless it says so.
class JobProcess
{
public:
    /// Starts `program`. ProviderError when that fails.
    JobProcess(const QString& program, const QStringList& arguments, const CallMessage& call);
    /// Kills it when it still runs, and waits for its end.
    ~JobProcess();
    Q_DISABLE_COPY_MOVE(JobProcess)

    /// What to poll to learn when Advance has something to do.
    void AddDescriptors(std::vector<pollfd>* watched) const;
    /// Passes on what can be passed on, and kills the process when its time to stop is over.
    void Advance();
    bool HasEnded() const { return !m_channel.IsOpen(); }

    /// Asks the process to stop; it is killed when it hasn't after `patience`.
    void Stop(std::chrono::milliseconds patience);
    bool IsStopping() const { return m_stopping; }
    /// When the process will be killed; never while it isn't stopping.
    const QDeadlineTimer& KillTime() const { return m_killTime; }

    /// Its answer, once it has ended; nothing when it ended without one.
    const std::optional<ResultMessage>& Answer() const { return m_answer; }
    /// How it ended when it ended without an answer, and the last of what it said.
    QString LastWords() const;

private:
    void Start(const QString& program, const QStringList& arguments, int channel, int error);
    void SendCall();
    void ReceiveAnswer();
    void ReadError();
    void TakeFrames();
    void Reap();

    pid_t m_process = 0;
    UniqueFd m_channel; // its standard input and output; closed when it has ended
    UniqueFd m_error;
    QByteArray m_toSend;
    FrameReader m_frames;
    std::optional<ResultMessage> m_answer;
    QByteArray m_errorOutput;
    int m_status = 0;
    bool m_stopping = false;
    QDeadlineTimer m_killTime{QDeadlineTimer::Forever};
};

} // namespace quenvolta
