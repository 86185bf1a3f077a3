#pragma once

#include "snapin/node_services.h"
#include "snapin/snap_in_item_list.h"

namespace quenvolta
{

/// Several items that are selected together. It offers what makes sense for all of them: copying their addresses,
/// deleting accounts.
class CMultiSelectItem final : public CSnapInItem
{
public:
    /// At least one item.
    CMultiSelectItem(const NodeServices& services, CSnapInItemList items);

    HRESULT Notify(IConsole& console, const MMCNotification& notification) override;
    HRESULT GetScopePaneInfo(SCOPEDATAITEM* item) override;
    HRESULT GetResultViewType(QString* viewType) override;
    HRESULT GetResultPaneInfo(RESULTDATAITEM* item) override;
    HRESULT AddMenuItems(IContextMenuCallback& callback, std::uint32_t insertionAllowed) override;
    HRESULT Command(IConsole& console, int command) override;
    HRESULT QueryPagesFor() override { return S_FALSE; }
    QList<int> Toolbars() const override { return {}; }
    void UpdateToolbars(IQuenvoltaComponent& /*component*/) override {}
    SCOPEDATAITEM& GetScopeData() override { return m_items.front()->GetScopeData(); }
    RESULTDATAITEM GetResultData() override { return m_items.front()->GetResultData(); }
    /// Answers CCF_MMC_MULTISELECT_DATAOBJECT; for the rest the first item speaks.
    HRESULT FillData(const QString& format, QByteArray* data) const override;
    DataObjectPtr GetDataObject(DATA_OBJECT_TYPES type) override;
    int DeleteSeveralQuestion() const override;

private:
    HRESULT Select(IConsole& console) const;
    HRESULT Delete();
    bool HaveAddresses() const;
    QStringList Addresses() const;

    const NodeServices& m_services;
    CSnapInItemList m_items;
};

} // namespace quenvolta
