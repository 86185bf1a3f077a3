#include "snapin/mmc_standalone_data.h"

#include "snapin/computer_option.h"
#include "snapin/notification_boundary.h"
#include "snapin/snap_in_stream.h"

namespace quenvolta
{

CMMCStandaloneData::CMMCStandaloneData(const SnapInServices& services, const QStringList& arguments)
    : CMMCComponentData(services, false)
    , m_commandLineComputer(FindComputerOption(arguments).computer)
{
    if (!m_commandLineComputer.isEmpty())
        Model().SetComputer(m_commandLineComputer,
                            true); // the root connects when it is expanded, and shows why it can't
    m_isDirty = false;
}

HRESULT CMMCStandaloneData::Load(const QByteArray& stream)
{
    return AtBoundary(Messages(), [&] {
        if (m_commandLineComputer.isEmpty())
            Model().SetComputer(ReadSnapInStream(stream), true);
        m_isDirty = false;
        return S_OK;
    });
}

HRESULT CMMCStandaloneData::Save(QByteArray* stream, bool clearDirty)
{
    *stream = WriteSnapInStream(Model().ComputerName());
    if (clearDirty)
        m_isDirty = false;
    return S_OK;
}

HRESULT CMMCStandaloneData::GetSizeMax(std::uint64_t* size) const
{
    *size = static_cast<std::uint64_t>(WriteSnapInStream(ManagedComputer()).size());
    return S_OK;
}

HRESULT CMMCStandaloneData::InitNew()
{
    m_isDirty = false;
    return S_OK;
}

void CMMCStandaloneData::OnComputerChanged()
{
    m_isDirty = true;
    CMMCComponentData::OnComputerChanged();
}

} // namespace quenvolta
