#pragma once

#include "host/scope_tree_model.h"
#include "platform/mmc/result_data_item.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <functional>
#include <vector>

namespace quenvolta
{

class ImageListAdapter;

/// The result list of one scope item: its children in the tree, and after them the items that the snap-in inserted.
class ResultListModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// Asks the snap-in for the text of an item's column.
    using TextSource = std::function<QString(RESULTDATAITEM item)>;

    ResultListModel(ScopeTreeModel& tree, const ImageListAdapter& images, TextSource textSource);

    /// Begins the list of another item (null: of none), without columns and inserted items.
    void Show(const ScopeEntry* entry);
    void InsertColumn(int column, const QString& title);
    HRESULT Insert(RESULTDATAITEM* item);
    /// E_INVALIDARG for an item that isn't in the list.
    HRESULT Remove(HRESULTITEM id);
    void Clear();
    /// Shows the inserted items that wait for it.
    void Flush();

    /// The scope item of the row, null for an inserted item.
    const ScopeEntry* ScopeEntryAt(int row) const;
    /// The inserted item of the row; its `itemID` is 0 for a scope item.
    RESULTDATAITEM ItemAt(int row) const;
    /// The snap-in's object behind an inserted item; null for one that is no longer in the list.
    MMC_COOKIE CookieOf(HRESULTITEM id) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// A new name is only asked for: RenameRequested.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void RenameRequested(quenvolta::HSCOPEITEM id, const QString& name);

private:
    int ScopeCount() const;
    bool IsShown(const QModelIndex& treeParent) const;
    QString TextAt(const QModelIndex& index) const;
    void FollowTree();

    ScopeTreeModel& m_tree;
    const ImageListAdapter& m_images;
    TextSource m_textSource;
    const ScopeEntry* m_shown = nullptr;
    QStringList m_columns;
    std::vector<RESULTDATAITEM> m_items;
    std::vector<RESULTDATAITEM> m_waiting;
    HRESULTITEM m_lastId = 0;
};

} // namespace quenvolta
