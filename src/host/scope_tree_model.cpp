#include "host/scope_tree_model.h"

#include "host/image_list_adapter.h"

#include <iterator>
#include <ranges>

namespace quenvolta
{

namespace
{

void TakeDescription(ScopeEntry& entry, const SCOPEDATAITEM& item)
{
    if (item.mask & SDI_IMAGE)
        entry.image = item.nImage;
    if (item.mask & SDI_CHILDREN)
        entry.isLeaf = item.cChildren == 0;
    if (item.mask & SDI_PARAM)
        entry.cookie = item.lParam;
}

} // namespace

ScopeTreeModel::ScopeTreeModel(const ImageListAdapter& images, NameSource nameSource)
    : m_images(images)
    , m_nameSource(std::move(nameSource))
{
}

HSCOPEITEM ScopeTreeModel::InsertRoot()
{
    std::vector<std::unique_ptr<ScopeEntry>> entries;
    entries.push_back(std::make_unique<ScopeEntry>());
    entries.front()->id = ++m_lastId;
    entries.front()->parent = &m_root;
    m_entries.insert(m_lastId, entries.front().get());
    InsertAt(m_root, 0, std::move(entries));
    return m_lastId;
}

HRESULT ScopeTreeModel::Insert(SCOPEDATAITEM* item)
{
    const bool beside = (item->mask & (SDI_NEXT | SDI_PREVIOUS)) != 0;
    ScopeEntry* relative = Find(item->relativeID);
    if (relative == nullptr || (beside && relative->parent == &m_root))
        return E_INVALIDARG;
    ScopeEntry* parent = beside ? relative->parent : relative;
    if (beside || parent != m_batchParent)
        Flush();

    auto entry = std::make_unique<ScopeEntry>();
    entry->id = ++m_lastId;
    entry->parent = parent;
    TakeDescription(*entry, *item);
    m_entries.insert(entry->id, entry.get());
    item->ID = entry->id;

    if (beside) {
        const std::size_t place = static_cast<std::size_t>(relative->row) + ((item->mask & SDI_PREVIOUS) ? 1 : 0);
        std::vector<std::unique_ptr<ScopeEntry>> entries;
        entries.push_back(std::move(entry));
        InsertAt(*parent, place, std::move(entries));
        return S_OK;
    }
    m_batchParent = parent;
    m_batch.push_back(std::move(entry));
    if (m_batchDepth == 0)
        Flush();
    return S_OK;
}

HRESULT ScopeTreeModel::Change(const SCOPEDATAITEM& item)
{
    ScopeEntry* entry = Find(item.ID);
    if (entry == nullptr)
        return E_INVALIDARG;
    TakeDescription(*entry, item);
    if (entry->row >= 0) {
        const QModelIndex changed = IndexOf(*entry);
        Q_EMIT dataChanged(changed, changed);
    }
    return S_OK;
}

void ScopeTreeModel::Remove(ScopeEntry& entry, bool deleteThis)
{
    Flush();
    ScopeEntry& parent = deleteThis ? *entry.parent : entry;
    const std::size_t first = deleteThis ? static_cast<std::size_t>(entry.row) : 0;
    const std::size_t count = deleteThis ? 1 : parent.children.size();
    if (count == 0)
        return;
    const auto begin = std::next(parent.children.begin(), static_cast<std::ptrdiff_t>(first));
    const auto end = std::next(begin, static_cast<std::ptrdiff_t>(count));
    beginRemoveRows(&parent == &m_root ? QModelIndex() : IndexOf(parent), static_cast<int>(first),
                    static_cast<int>(first + count) - 1);
    for (auto removed = begin; removed != end; ++removed)
        Forget(**removed);
    parent.children.erase(begin, end);
    for (std::size_t row = first; row < parent.children.size(); ++row)
        parent.children[row]->row = static_cast<int>(row);
    endRemoveRows();
}

void ScopeTreeModel::Clear()
{
    Flush();
    beginResetModel();
    m_entries.clear();
    m_root.children.clear();
    m_editable = 0;
    endResetModel();
}

void ScopeTreeModel::EndBatch()
{
    if (--m_batchDepth == 0)
        Flush();
}

void ScopeTreeModel::Flush()
{
    if (m_batch.empty())
        return;
    ScopeEntry& parent = *std::exchange(m_batchParent, nullptr);
    InsertAt(parent, parent.children.size(), std::exchange(m_batch, {}));
}

void ScopeTreeModel::InsertAt(ScopeEntry& parent, std::size_t place, std::vector<std::unique_ptr<ScopeEntry>> entries)
{
    const auto first = static_cast<int>(place);
    beginInsertRows(&parent == &m_root ? QModelIndex() : IndexOf(parent), first,
                    first + static_cast<int>(entries.size()) - 1);
    parent.children.insert(std::next(parent.children.begin(), first), std::make_move_iterator(entries.begin()),
                           std::make_move_iterator(entries.end()));
    for (std::size_t row = place; row < parent.children.size(); ++row)
        parent.children[row]->row = static_cast<int>(row);
    endInsertRows();
}

void ScopeTreeModel::Forget(const ScopeEntry& entry)
{
    m_entries.remove(entry.id);
    for (const auto& child : entry.children)
        Forget(*child);
}

ScopeEntry* ScopeTreeModel::EntryOf(const QModelIndex& index)
{
    return static_cast<ScopeEntry*>(index.internalPointer());
}

const ScopeEntry& ScopeTreeModel::EntryOrRoot(const QModelIndex& index) const
{
    return index.isValid() ? *EntryOf(index) : m_root;
}

QModelIndex ScopeTreeModel::IndexOf(const ScopeEntry& entry) const
{
    return createIndex(entry.row, 0, &entry);
}

QIcon ScopeTreeModel::IconOf(const ScopeEntry& entry) const
{
    return m_images.Icon(entry.image);
}

void ScopeTreeModel::UpdateExpandSign(const ScopeEntry& entry)
{
    const QList<QPersistentModelIndex> parents{IndexOf(entry)};
    Q_EMIT layoutAboutToBeChanged(parents);
    Q_EMIT layoutChanged(parents);
}

QModelIndex ScopeTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    const ScopeEntry& entry = EntryOrRoot(parent);
    if (column != 0 || row < 0 || static_cast<std::size_t>(row) >= entry.children.size())
        return {};
    return createIndex(row, 0, entry.children[static_cast<std::size_t>(row)].get());
}

QModelIndex ScopeTreeModel::parent(const QModelIndex& child) const
{
    if (!child.isValid())
        return {};
    const ScopeEntry* parentEntry = EntryOf(child)->parent;
    return parentEntry == &m_root ? QModelIndex() : IndexOf(*parentEntry);
}

int ScopeTreeModel::rowCount(const QModelIndex& parent) const
{
    return static_cast<int>(EntryOrRoot(parent).children.size());
}

int ScopeTreeModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 1;
}

bool ScopeTreeModel::hasChildren(const QModelIndex& parent) const
{
    const ScopeEntry& entry = EntryOrRoot(parent);
    if (&entry == &m_root || entry.isExpanded)
        return !entry.children.empty();
    return !entry.isLeaf;
}

QVariant ScopeTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return NameOf(*EntryOf(index));
    case Qt::DecorationRole:
        return IconOf(*EntryOf(index));
    default:
        return {};
    }
}

bool ScopeTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (index.isValid() && role == Qt::EditRole)
        Q_EMIT RenameRequested(EntryOf(index)->id, value.toString());
    return false;
}

Qt::ItemFlags ScopeTreeModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const ScopeEntry& entry = *EntryOf(index);
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    flags.setFlag(Qt::ItemNeverHasChildren, entry.isLeaf);
    flags.setFlag(Qt::ItemIsEditable, IsEditable(entry));
    return flags;
}

} // namespace quenvolta
