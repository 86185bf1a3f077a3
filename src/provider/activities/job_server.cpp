#include "provider/activities/job_server.h"

#include "provider/call_failure.h"
#include "provider/call_rows.h"
#include "provider/provider_input.h"
#include "provider/provider_output.h"
#include "provider/served_namespaces.h"

#include <csignal>
#include <sys/prctl.h>
#include <utility>

namespace quenvolta
{

namespace
{

sigset_t StopSignals()
{
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int each : {SIGTERM, SIGINT, SIGHUP})
        ::sigaddset(&signals, each);
    return signals;
}

// Blocked signals wait until they are asked for: nothing is interrupted in the middle, and no handler is needed.
bool IsAskedToStop()
{
    sigset_t pending;
    ::sigpending(&pending);
    return ::sigismember(&pending, SIGTERM) == 1 || ::sigismember(&pending, SIGINT) == 1 ||
           ::sigismember(&pending, SIGHUP) == 1;
}

} // namespace

JobServer::JobServer(int input, int output, QString dataFolder, ServedVersion version)
    : m_inputDescriptor(input)
    , m_outputDescriptor(output)
    , m_dataFolder(std::move(dataFolder))
    , m_version(std::move(version))
{
}

int JobServer::Run()
{
    const sigset_t signals = StopSignals();
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
    // The input ends with the provider, too; this is noticed even where somebody else holds it open.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);

    ProviderInput input(m_inputDescriptor);
    ProviderOutput output(m_outputDescriptor);
    const std::optional<Message> message = input.Wait();
    const CallMessage* call = message ? std::get_if<CallMessage>(&*message) : nullptr;
    if (!call)
        return 1;
    output.SendMagicLine();
    const CancelCheck cancel = [&] { return IsAskedToStop() || input.EndedOrStopped(call->callId); };
    CallRows rows(call->callId, output);
    ResultMessage result;
    try {
        ServedNamespaces namespaces(m_dataFolder, m_version);
        // A process before this one may have begun the same request; what it left says so.
        CallContext context{namespaces.Require(call->namespaceName).Classes(), rows, cancel, call->requestId, true};
        result = namespaces.Carry(*call, context);
    } catch (...) {
        result = FailureResult(call->callId, CurrentError());
    }
    output.Send(result);
    return 0;
}

} // namespace quenvolta
