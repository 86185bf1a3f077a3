#pragma once

#include "platform/mmc/persist_stream_init.h"
#include "snapin/mmc_component_data.h"

#include <QStringList>

namespace quenvolta
{

/// The snap-in with a root of its own.
class CMMCStandaloneData final : public CMMCComponentData, public IPersistStreamInit
{
public:
    /// `arguments`: the console's command line, which may name the computer to manage.
    CMMCStandaloneData(const SnapInServices& services, const QStringList& arguments);

    HRESULT IsDirty() const override { return m_isDirty ? S_OK : S_FALSE; }
    /// A computer that the command line names wins over the stream's.
    HRESULT Load(const QByteArray& stream) override;
    HRESULT Save(QByteArray* stream, bool clearDirty) override;
    HRESULT GetSizeMax(std::uint64_t* size) const override;
    HRESULT InitNew() override;

private:
    void OnComputerChanged() override;

    QString m_commandLineComputer;
    bool m_isDirty = false;
};

} // namespace quenvolta
