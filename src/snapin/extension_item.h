#pragma once

#include "snapin/extended_node.h"
#include "snapin/snap_in_item_impl.h"

namespace quenvolta
{

/// The node of another snap-in below which the root hangs. T names its node type.
template <typename T>
class CExtensionItem : public CSnapInItemImpl<T>
{
public:
    explicit CExtensionItem(CMMCComponentData& data)
        : m_data(data)
    {
    }

    /// Takes what the extended node's data object says of its computer.
    HRESULT InitDataClass(const DataObjectPtr& object)
    {
        m_known = ReadMachineName(object, &m_computer);
        return m_known;
    }

    HRESULT Notify(IConsole& console, const MMCNotification& notification) override
    {
        if (notification.type != MMC_NOTIFY_TYPE::MMCN_EXPAND || !notification.on)
            return E_NOTIMPL;
        return Failed(m_known) ? m_known : ExtendNode(m_data, console, m_computer, notification.scopeItem);
    }

    HRESULT GetScopePaneInfo(SCOPEDATAITEM* /*item*/) override { return S_OK; }
    HRESULT GetResultViewType(QString* /*viewType*/) override { return S_FALSE; }
    HRESULT GetResultPaneInfo(RESULTDATAITEM* /*item*/) override { return S_OK; }
    HRESULT AddMenuItems(IContextMenuCallback& /*callback*/, std::uint32_t /*insertionAllowed*/) override
    {
        return S_OK;
    }
    HRESULT Command(IConsole& /*console*/, int /*command*/) override { return S_FALSE; }
    HRESULT QueryPagesFor() override { return S_FALSE; }
    QList<int> Toolbars() const override { return {}; }
    void UpdateToolbars(IQuenvoltaComponent& /*component*/) override {}
    SCOPEDATAITEM& GetScopeData() override { return m_scopeData; }
    RESULTDATAITEM GetResultData() override { return {}; }

protected:
    QString DisplayName() const override { return {}; }

private:
    CMMCComponentData& m_data;
    SCOPEDATAITEM m_scopeData;
    QString m_computer;
    HRESULT m_known = DV_E_FORMATETC;
};

} // namespace quenvolta
