#pragma once

#include "host/scope_entry.h"
#include "platform/hresult.h"
#include "platform/mmc/scope_data_item.h"

#include <QAbstractItemModel>
#include <QHash>

#include <functional>
#include <memory>
#include <vector>

namespace quenvolta
{

class ImageListAdapter;

/// The scope tree. Names are asked of the snap-in when they are shown. Children that are appended one by one while
/// a batch is open reach the views together.
class ScopeTreeModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    using NameSource = std::function<QString(MMC_COOKIE)>;

    ScopeTreeModel(const ImageListAdapter& images, NameSource nameSource);

    /// Puts the static root into the empty tree.
    HSCOPEITEM InsertRoot();
    HRESULT Insert(SCOPEDATAITEM* item);
    HRESULT Change(const SCOPEDATAITEM& item);
    /// Empties the tree; identifiers are not used again.
    void Clear();
    /// Removes the item's children, and the item itself with `deleteThis`.
    void Remove(ScopeEntry& entry, bool deleteThis);

    void BeginBatch() { ++m_batchDepth; }
    void EndBatch();
    /// Shows what the open batch gathered.
    void Flush();

    /// Null for an item that isn't in the tree.
    ScopeEntry* Find(HSCOPEITEM id) const { return m_entries.value(id); }
    ScopeEntry* Root() const { return m_root.children.empty() ? nullptr : m_root.children.front().get(); }
    static ScopeEntry* EntryOf(const QModelIndex& index);
    QModelIndex IndexOf(const ScopeEntry& entry) const;
    QString NameOf(const ScopeEntry& entry) const { return m_nameSource(entry.cookie); }
    QIcon IconOf(const ScopeEntry& entry) const;

    /// Only this item's name may be edited; 0 for none.
    void SetEditable(HSCOPEITEM id) { m_editable = id; }
    bool IsEditable(const ScopeEntry& entry) const { return entry.id == m_editable; }
    /// Has the views look again whether the item can be expanded.
    void UpdateExpandSign(const ScopeEntry& entry);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// A new name is only asked for: RenameRequested.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void RenameRequested(quenvolta::HSCOPEITEM id, const QString& name);

private:
    const ScopeEntry& EntryOrRoot(const QModelIndex& index) const;
    void InsertAt(ScopeEntry& parent, std::size_t place, std::vector<std::unique_ptr<ScopeEntry>> entries);
    void Forget(const ScopeEntry& entry);

    const ImageListAdapter& m_images;
    NameSource m_nameSource;
    ScopeEntry m_root; // the invisible one
    QHash<HSCOPEITEM, ScopeEntry*> m_entries;
    HSCOPEITEM m_lastId = 0;
    HSCOPEITEM m_editable = 0;
    int m_batchDepth = 0;
    ScopeEntry* m_batchParent = nullptr;
    std::vector<std::unique_ptr<ScopeEntry>> m_batch;
};

} // namespace quenvolta
