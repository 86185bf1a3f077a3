#pragma once

#include "provider/activities/running_activities.h"
#include "provider/provider_input.h"
#include "provider/provider_output.h"
#include "provider/request_journal.h"
#include "provider/served_namespaces.h"
#include "provider/served_version.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>

namespace quenvolta
{

/// Serves one console over a pair of streams until the input ends. Calls are carried out one after another; activities
/// run beside them, each in a process of its own.
class ProviderServer
{
public:
    struct Options {
        QString dataFolder;
        ServedVersion version;
        /// What is started for an activity, with JobArguments.
        QString jobProgram = QStringLiteral("/proc/self/exe");
        /// How long an activity may take to stop and to clean up before it is killed.
        std::chrono::milliseconds jobPatience = std::chrono::seconds(30);
    };

    ProviderServer(int input, int output, Options options);
    ~ProviderServer();

    /// Returns 0 when the input ended as it should, 1 when it was broken.
    int Run();

    /// Why Run returned 1.
    const QString& Fault() const { return m_fault; }

private:
    void Serve();
    bool Handle(const Message& message);
    bool Greet(const HelloMessage& hello);
    void Answer(const CallMessage& call);
    ResultMessage Carry(const CallMessage& call);
    std::optional<ResultMessage> StartActivity(const CallMessage& call);
    std::optional<ResultMessage> Recall(const CallMessage& call, bool* begun);
    void FinishRequest(const QUuid& request, const ResultMessage& result);
    void OpenServer();
    void WaitForSomething(bool forInput);
    void SendEnded();
    void EndActivities();

    ProviderInput m_input;
    ProviderOutput m_output;
    Options m_options;
    // Opened with the first namespace, so that a folder that can't be used is an answer and not a silent end.
    std::unique_ptr<ServedNamespaces> m_server;
    std::unique_ptr<RequestJournal> m_journal;
    RunningActivities m_activities;
    bool m_greeted = false;
    QString m_fault;
};

} // namespace quenvolta
