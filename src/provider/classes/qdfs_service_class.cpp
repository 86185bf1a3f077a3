#include "provider/classes/qdfs_service_class.h"

#include "provider/classes/service_class.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t kDisabled = 4;

InstanceRow Row(const ClassDefinitionPtr& definition)
{
    InstanceRow row(definition);
    row.Set(u"Name", QdfsServiceClass::kName.toString())
        .Set(u"ServiceState", static_cast<std::uint32_t>(ServiceState::Stopped))
        .Set(u"StartMode", kDisabled)
        .Set(u"ExitCode", std::uint32_t{0});
    return row;
}

} // namespace

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
