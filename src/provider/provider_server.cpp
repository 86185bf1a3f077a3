#include "provider/provider_server.h"

#include "foundation/exception.h"
#include "provider/call_rows.h"
#include "provider/provider_error.h"
#include "provider/provider_texts.h"
#include "provider/server_namespaces.h"
#include "provider/svn/repository_names.h"
#include "provider/svn/repository_store.h"

#include <algorithm>
#include <new>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// Whatever an operation threw, as the error that the console gets.
ProviderError CurrentError()
{
    try {
        throw;
    } catch (const ProviderError& error) {
        return error;
    } catch (const Exception& failure) {
        return ProviderError(WBEM_E_FAILED, failure.GetMessage());
    } catch (const std::bad_alloc&) {
        return ProviderError(E_OUTOFMEMORY, replies::kOutOfMemory.Whole());
    } catch (const std::exception& failure) {
        return ProviderError(WBEM_E_FAILED, replies::kInternalFailure.arg(QString::fromLocal8Bit(failure.what())));
    }
}

WbemObjectPtr MakeErrorObject(const ProviderError& error)
{
    InstanceRow row(ClassTable(u"Quenvolta"_s, ServedVersion().Table()).Find(u"Quenvolta_ExtendedError"_s));
    row.Set(u"Description", error.Description())
        .Set(u"Summary", error.Summary())
        .Set(u"Details", error.Details())
        .Set(u"ProbableReason", static_cast<std::uint32_t>(error.ProbableReason()));
    return row.ToObject();
}

} // namespace

ProviderServer::ProviderServer(int input, int output, Options options)
    : m_input(input)
    , m_output(output)
    , m_options(std::move(options))
{
}

ProviderServer::~ProviderServer() = default;

int ProviderServer::Run()
{
    m_output.SendMagicLine();
    m_output.Send(HelloMessage{kProtocolVersion,
                               {{u"product"_s, u"quenvolta-provider"_s}, {u"version"_s, m_options.version.Text()}}});
    bool greeted = false;
    while (!m_output.IsGone()) {
        const std::optional<Message> message = m_input.Wait();
        if (!message)
            break;
        if (const HelloMessage* hello = std::get_if<HelloMessage>(&*message)) {
            if (greeted || hello->protocolVersion != kProtocolVersion) {
                m_fault = replies::kOtherProtocol.arg(QString::number(hello->protocolVersion),
                                                      QString::number(kProtocolVersion));
                return 1;
            }
            greeted = true;
        } else if (const CallMessage* call = std::get_if<CallMessage>(&*message); call && greeted) {
            Answer(*call);
        } else if (!std::holds_alternative<StopMessage>(*message)) {
            m_fault = replies::kUnexpectedMessage.Whole();
            return 1;
        } // a Stop that came after its call had ended says nothing any more
    }
    m_fault = m_input.Fault();
    return m_fault.isEmpty() ? 0 : 1;
}

void ProviderServer::Answer(const CallMessage& call)
{
    CallRows rows(call.callId, m_output);
    ResultMessage result;
    try {
        OpenServer();
        ManagementNamespace& target = RequireNamespace(call.namespaceName);
        const CancelCheck cancel = [this, &call] { return m_output.IsGone() || m_input.EndedOrStopped(call.callId); };
        CallContext context{target.Classes(), rows, cancel, call.requestId, false};
        const bool changes = call.operation == Operation::ExecMethod && target.Changes(call.target, call.method);
        result = changes ? CarryChange(call, context, target) : Carry(call, context, target);
    } catch (...) {
        result = Failure(call, CurrentError());
    }
    rows.Flush();
    m_output.Send(result);
}

ResultMessage ProviderServer::Carry(const CallMessage& call, CallContext& context, ManagementNamespace& target)
{
    ResultMessage result;
    result.callId = call.callId;
    switch (call.operation) {
    case Operation::OpenNamespace:
        break;
    case Operation::GetObject:
        result.object = target.GetObject(call.target, context);
        break;
    case Operation::CreateInstanceEnum:
        target.EnumerateInstances(call.target, context);
        break;
    case Operation::ExecMethod:
        result.object = target.ExecMethod(call.target, call.method, call.input, context);
        break;
    }
    return result;
}

ResultMessage ProviderServer::CarryChange(const CallMessage& call, CallContext& context, ManagementNamespace& target)
{
    const RequestJournal::Known known = m_journal->Begin(call.requestId);
    if (known.result) {
        ResultMessage result = *known.result;
        result.callId = call.callId;
        return result;
    }
    context.repeated = known.begun;
    try {
        ResultMessage result = Carry(call, context, target);
        m_journal->Finish(call.requestId, result);
        return result;
    } catch (...) {
        m_journal->Forget(call.requestId);
        throw;
    }
}

void ProviderServer::OpenServer()
{
    if (m_data)
        return;
    auto data = std::make_unique<DataFolder>(m_options.dataFolder);
    auto journal = std::make_unique<RequestJournal>(m_options.dataFolder);
    std::vector<std::unique_ptr<ManagementNamespace>> namespaces;
    namespaces.push_back(MakeServerNamespace(*data, m_options.version));
    namespaces.push_back(MakeStandardNamespace(m_options.version));
    CleanLeftovers(*data);
    m_data = std::move(data);
    m_journal = std::move(journal);
    m_namespaces = std::move(namespaces);
}

ManagementNamespace& ProviderServer::RequireNamespace(const QString& name)
{
    const auto found = std::find_if(m_namespaces.begin(), m_namespaces.end(), [&name](const auto& each) {
        return each->Name().compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == m_namespaces.end())
        throw ProviderError(WBEM_E_INVALID_NAMESPACE, replies::kUnknownNamespace.arg(RepositoryNames::Show(name)));
    return **found;
}

ResultMessage ProviderServer::Failure(const CallMessage& call, const ProviderError& error) const
{
    ResultMessage result;
    result.callId = call.callId;
    result.code = error.Code();
    result.error = MakeErrorObject(error);
    return result;
}

} // namespace quenvolta
