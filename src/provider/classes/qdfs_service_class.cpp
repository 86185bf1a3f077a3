#include "provider/classes/qdfs_service_class.h"

#include "foundation/registry_accessor.h"
#include "foundation/registry_key.h"
#include "provider/data_lock.h"
#include "provider/provider_error.h"
#include "provider/provider_texts.h"
#include "provider/replication/replication_texts.h"
#include "provider/replication/service_process.h"
#include "provider/roles/role_methods.h"
#include "provider/service_state.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kAutomatic = 2;
constexpr std::uint32_t kDisabled = 4;

constexpr std::int32_t kServiceAlreadyRunning = 1056;
constexpr std::int32_t kServiceDisabled = 1058;
constexpr std::int32_t kServiceNotActive = 1062;
constexpr std::uint32_t kProcessAborted = 1067;

ServiceState StateOf(const std::optional<ServiceProcess::Record>& process)
{
    if (!process || process->process == 0)
        return ServiceState::Stopped;
    return process->phase == ServiceProcess::Phase::Running ? ServiceState::Running : ServiceState::StopPending;
}

bool WasAborted(const std::optional<ServiceProcess::Record>& process)
{
    return process && process->process == 0 && process->phase != ServiceProcess::Phase::Ended;
}

RegistryKey Settings(DataFolder& data)
{
    return {data.Settings(), RegistryAccessor::kServerKey.toString()};
}

QString StartModeValue()
{
    return u"QdfsStartMode"_s;
}

} // namespace

QdfsServiceClass::QdfsServiceClass(DataFolder& data)
    : m_data(data)
{
    Handle(u"StartService"_s, Effect::Changes, [this](MethodCall& call) { Start(call); });
    Handle(u"StopService"_s, Effect::Changes, [this](MethodCall& call) { Stop(call); });
    Handle(u"ChangeStartMode"_s, Effect::Changes, [this](MethodCall& call) { ChangeStartMode(call); });
    rolemethods::AddToQdfsService(*this, data);
}

InstanceRow QdfsServiceClass::Row(const ClassDefinitionPtr& definition) const
{
    const std::optional<ServiceProcess::Record> process = ServiceProcess::Read(m_data.Path());
    InstanceRow row(definition);
    row.Set(u"Name", kName.toString())
        .Set(u"ServiceState", static_cast<std::uint32_t>(StateOf(process)))
        .Set(u"StartMode", StartMode())
        .Set(u"ExitCode", WasAborted(process) ? kProcessAborted : 0U);
    return row;
}

std::uint32_t QdfsServiceClass::StartMode() const
{
    return Settings(m_data).ReadDword(StartModeValue()).value_or(kDisabled);
}

void QdfsServiceClass::Start(MethodCall& call)
{
    const DataLock lock(m_data.Path(), call.Context().cancel);
    if (StateOf(ServiceProcess::Read(m_data.Path())) == ServiceState::Running) {
        if (call.Context().repeated)
            return;
        throw ProviderError(HResultFromWin32(kServiceAlreadyRunning), replicationtexts::kAlreadyRunning.Whole());
    }
    if (StartMode() == kDisabled)
        throw ProviderError(HResultFromWin32(kServiceDisabled), replicationtexts::kDisabled.Whole());
    ServiceProcess::Start(u"/proc/self/exe"_s, m_data.Path());
}

void QdfsServiceClass::Stop(MethodCall& call)
{
    constexpr std::chrono::seconds kPatience(30);
    const DataLock lock(m_data.Path(), call.Context().cancel);
    if (StateOf(ServiceProcess::Read(m_data.Path())) == ServiceState::Stopped && !call.Context().repeated)
        throw ProviderError(HResultFromWin32(kServiceNotActive), replicationtexts::kNotRunning.Whole());
    if (!ServiceProcess::Stop(m_data.Path(), kPatience))
        throw ProviderError(WBEM_E_FAILED, replicationtexts::kNotStopped.Whole());
}

void QdfsServiceClass::ChangeStartMode(MethodCall& call)
{
    const qint32 mode = call.Int32(u"StartMode");
    if (mode < static_cast<qint32>(kAutomatic) || mode > static_cast<qint32>(kDisabled))
        throw ProviderError(WBEM_E_INVALID_PARAMETER, replies::kInvalidStartMode.arg(QString::number(mode)));
    const DataLock lock(m_data.Path(), call.Context().cancel);
    Settings(m_data).Write(StartModeValue(), RegistryValue::FromDword(static_cast<std::uint32_t>(mode)));
}

std::optional<InstanceRow> QdfsServiceClass::Get(const ClassDefinitionPtr& definition, const Keys& keys, CallContext&)
{
    if (keys.value(u"Name"_s).compare(kName, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    return Row(definition);
}

void QdfsServiceClass::Enumerate(const ClassDefinitionPtr& definition, CallContext& context)
{
    context.rows.AddInstance(Row(definition));
}

} // namespace quenvolta
