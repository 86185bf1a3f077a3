#pragma once

#include "platform/unique_fd.h"

#include <QString>

#include <chrono>
#include <optional>
#include <sys/types.h>

namespace quenvolta
{

/// The process of the service for distributed repositories, known by a file in the server's data folder that it keeps
/// locked while it lives. The file tells what it is doing; what a process that was killed left there tells that it
/// didn't end by itself.
class ServiceProcess
{
public:
    enum class Phase : char { Running = '+', Stopping = '-', Ended = '.' };

    static QString FileIn(const QString& dataFolder);

    /// What the file says of a process that lives, or of the last one that did. Nothing when there never was one.
    struct Record {
        Phase phase = Phase::Ended;
        /// 0 when it doesn't live any more.
        pid_t process = 0;
    };
    static std::optional<Record> Read(const QString& dataFolder);

    /// The life of this process as the service: from here on it has no terminal and no parent, and serves until it is
    /// asked to terminate. Returns the process's exit status: 1 when another one serves already.
    static int Serve(const QString& dataFolder);

    /// Starts `program` as the service's process and waits until it serves. ProviderError when it doesn't.
    static void Start(const QString& program, const QString& dataFolder);
    /// Asks the process that lives to terminate. False when it has not ended within the time.
    static bool Stop(const QString& dataFolder, std::chrono::milliseconds patience);

private:
    explicit ServiceProcess(UniqueFd file);
    void Note(Phase phase) const;

    UniqueFd m_file;
};

} // namespace quenvolta
