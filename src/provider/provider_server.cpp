#include "provider/provider_server.h"

#include "provider/call_failure.h"
#include "provider/call_rows.h"
#include "provider/provider_texts.h"
#include "provider/server_namespaces.h"

#include <poll.h>
#include <utility>
#include <vector>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

RunningActivities::Options JobOptions(const ProviderServer::Options& options)
{
    return {options.jobProgram,
            {u"--job"_s, u"--data"_s, options.dataFolder, u"--as-version"_s, options.version.Text()},
            options.jobPatience};
}

} // namespace

ProviderServer::ProviderServer(int input, int output, Options options)
    : m_input(input)
    , m_output(output)
    , m_options(std::move(options))
    , m_activities(JobOptions(m_options))
{
}

ProviderServer::~ProviderServer() = default;

int ProviderServer::Run()
{
    m_output.SendMagicLine();
    m_output.Send(HelloMessage{kProtocolVersion,
                               {{u"product"_s, u"quenvolta-provider"_s}, {u"version"_s, m_options.version.Text()}}});
    Serve();
    EndActivities();
    if (m_fault.isEmpty())
        m_fault = m_input.Fault();
    return m_fault.isEmpty() ? 0 : 1;
}

void ProviderServer::Serve()
{
    while (!m_output.IsGone() && !m_input.HasEnded()) {
        SendEnded();
        const std::optional<Message> message = m_input.Take();
        if (!message)
            WaitForSomething(true);
        else if (!Handle(*message))
            return;
    }
}

// False when the console can't be understood.
bool ProviderServer::Handle(const Message& message)
{
    if (const HelloMessage* hello = std::get_if<HelloMessage>(&message))
        return Greet(*hello);
    if (const CallMessage* call = std::get_if<CallMessage>(&message); call && m_greeted) {
        Answer(*call);
        return true;
    }
    if (std::holds_alternative<StopMessage>(message))
        return true; // it came after its call had ended, and says nothing any more
    m_fault = replies::kUnexpectedMessage.Whole();
    return false;
}

bool ProviderServer::Greet(const HelloMessage& hello)
{
    if (!std::exchange(m_greeted, true) && hello.protocolVersion == kProtocolVersion)
        return true;
    m_fault = replies::kOtherProtocol.arg(QString::number(hello.protocolVersion), QString::number(kProtocolVersion));
    return false;
}

void ProviderServer::Answer(const CallMessage& call)
{
    std::optional<ResultMessage> result;
    try {
        OpenServer();
        const bool runs = m_server->EffectOf(call) == ManagementClass::Effect::Activity;
        result = runs ? StartActivity(call) : Carry(call);
    } catch (...) {
        result = FailureResult(call.callId, CurrentError());
    }
    if (result)
        m_output.Send(*result);
}

ResultMessage ProviderServer::Carry(const CallMessage& call)
{
    const bool changes = m_server->EffectOf(call) == ManagementClass::Effect::Changes;
    bool begun = false;
    if (changes) {
        if (const std::optional<ResultMessage> known = Recall(call, &begun))
            return *known;
    }
    CallRows rows(call.callId, m_output);
    const CancelCheck cancel = [this, &call] { return m_output.IsGone() || m_input.EndedOrStopped(call.callId); };
    ResultMessage result;
    try {
        CallContext context{
            m_server->Require(call.namespaceName).Classes(), rows, cancel, call.requestId, begun, &m_activities};
        result = m_server->Carry(call, context);
    } catch (...) {
        result = FailureResult(call.callId, CurrentError());
    }
    rows.Flush();
    if (changes)
        FinishRequest(call.requestId, result);
    return result;
}

// The answer, when there is one already.
std::optional<ResultMessage> ProviderServer::StartActivity(const CallMessage& call)
{
    bool begun = false;
    if (std::optional<ResultMessage> known = Recall(call, &begun))
        return known;
    try {
        m_activities.Start(call);
    } catch (...) {
        if (!begun)
            m_journal->Forget(call.requestId);
        throw;
    }
    return std::nullopt;
}

// What a request that was finished got; else the request is noted as begun.
std::optional<ResultMessage> ProviderServer::Recall(const CallMessage& call, bool* begun)
{
    RequestJournal::Known known = m_journal->Begin(call.requestId);
    *begun = known.begun;
    if (known.result)
        known.result->callId = call.callId;
    return known.result;
}

void ProviderServer::FinishRequest(const QUuid& request, const ResultMessage& result)
{
    if (Succeeded(result.code))
        m_journal->Finish(request, result);
    else
        m_journal->Forget(request);
}

void ProviderServer::OpenServer()
{
    if (m_server)
        return;
    auto server = std::make_unique<ServedNamespaces>(m_options.dataFolder, m_options.version);
    m_journal = std::make_unique<RequestJournal>(m_options.dataFolder);
    CleanLeftovers(server->Data());
    m_server = std::move(server);
}

void ProviderServer::WaitForSomething(bool forInput)
{
    std::vector<pollfd> watched;
    if (forInput)
        watched.push_back({m_input.Descriptor(), POLLIN, 0});
    m_activities.AddDescriptors(&watched);
    ::poll(watched.data(), watched.size(), m_activities.PollTimeout());
}

void ProviderServer::SendEnded()
{
    if (m_activities.IsEmpty())
        return;
    for (const RunningActivities::Ended& ended : m_activities.Advance()) {
        if (ended.leftThings)
            CleanLeftovers(m_server->Data());
        FinishRequest(ended.requestId, ended.result);
        m_output.Send(ended.result);
    }
}

void ProviderServer::EndActivities()
{
    m_activities.CancelAll();
    for (SendEnded(); !m_activities.IsEmpty(); SendEnded())
        WaitForSomething(false);
}

} // namespace quenvolta
