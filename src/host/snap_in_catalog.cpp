#include "host/snap_in_catalog.h"

#include "foundation/simple_exception.h"
#include "host/computer_node.h"
#include "snapin/class_ids.h"
#include "snapin/mmc_standalone_data.h"
#include "snapin/snap_in_stream.h"
#include "ui/string_table.h"

namespace quenvolta
{

SnapInCatalog::SnapInCatalog(const SnapInServices& services, QStringList arguments, std::optional<QString> extended)
    : m_services(services)
    , m_arguments(std::move(arguments))
    , m_extended(std::move(extended))
{
}

std::unique_ptr<IComponentData> SnapInCatalog::CreateNew() const
{
    if (m_extended)
        return std::make_unique<ComputerNode>(m_services, *m_extended);
    auto snapIn = std::make_unique<CMMCStandaloneData>(m_services, m_arguments);
    snapIn->InitNew();
    return snapIn;
}

std::unique_ptr<IComponentData> SnapInCatalog::Create(const ConsoleFile& file) const
{
    const ConsoleFile::SnapIn& first = file.snapIns.first();
    if (first.classId == kStandaloneClassId) {
        auto snapIn = std::make_unique<CMMCStandaloneData>(m_services, m_arguments);
        snapIn->Load(first.stream); // a failure was shown, and leaves the snap-in on the local computer
        return snapIn;
    }
    if (first.classId == ComputerNode::kClassId)
        return std::make_unique<ComputerNode>(m_services, ReadSnapInStream(first.stream));
    throw SimpleException::FromText(
        LoadString(StringId::kConsoleFileSnapIn, first.classId.toString(QUuid::WithBraces).toUpper()));
}

ConsoleFile SnapInCatalog::Describe(IComponentData& snapIn, bool clearDirty)
{
    if (const auto* node = dynamic_cast<const ComputerNode*>(&snapIn))
        return {{{ComputerNode::kClassId, WriteSnapInStream(node->Computer())}, {kExtensionClassId, {}}}};
    QByteArray stream;
    if (auto* persistent = dynamic_cast<IPersistStreamInit*>(&snapIn))
        persistent->Save(&stream, clearDirty);
    return {{{kStandaloneClassId, stream}}};
}

bool SnapInCatalog::IsDirty(IComponentData& snapIn)
{
    const auto* persistent = dynamic_cast<const IPersistStreamInit*>(&snapIn);
    return persistent != nullptr && persistent->IsDirty() == S_OK;
}

} // namespace quenvolta
