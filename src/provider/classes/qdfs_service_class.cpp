#include "provider/classes/qdfs_service_class.h"

#include "foundation/registry_accessor.h"
#include "foundation/registry_key.h"
#include "provider/data_lock.h"
#include "provider/provider_error.h"
#include "provider/provider_texts.h"
#include "provider/roles/role_methods.h"
#include "provider/service_state.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kAutomatic = 2;
constexpr std::uint32_t kDisabled = 4;

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
    Handle(u"ChangeStartMode"_s, Effect::Changes, [this](MethodCall& call) { ChangeStartMode(call); });
    rolemethods::AddToQdfsService(*this, data);
}

InstanceRow QdfsServiceClass::Row(const ClassDefinitionPtr& definition) const
{
    InstanceRow row(definition);
    row.Set(u"Name", kName.toString())
        .Set(u"ServiceState", static_cast<std::uint32_t>(ServiceState::Stopped))
        .Set(u"StartMode", Settings(m_data).ReadDword(StartModeValue()).value_or(kDisabled))
        .Set(u"ExitCode", std::uint32_t{0});
    return row;
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
