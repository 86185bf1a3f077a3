#include "host/result_list_model.h"

#include "host/image_list_adapter.h"

#include <algorithm>
#include <iterator>

namespace quenvolta
{

namespace
{

std::vector<RESULTDATAITEM>::const_iterator FindItem(const std::vector<RESULTDATAITEM>& items, HRESULTITEM id)
{
    const auto item = std::ranges::lower_bound(items, id, {}, &RESULTDATAITEM::itemID); // numbered as they came
    return item != items.end() && item->itemID == id ? item : items.end();
}

} // namespace

ResultListModel::ResultListModel(ScopeTreeModel& tree, const ImageListAdapter& images, TextSource textSource)
    : m_tree(tree)
    , m_images(images)
    , m_textSource(std::move(textSource))
{
    FollowTree();
}

void ResultListModel::FollowTree()
{
    connect(&m_tree, &QAbstractItemModel::rowsAboutToBeInserted, this,
            [this](const QModelIndex& parent, int first, int last) {
                if (IsShown(parent))
                    beginInsertRows({}, first, last);
            });
    connect(&m_tree, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex& parent) {
        if (IsShown(parent))
            endInsertRows();
    });
    connect(&m_tree, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex& parent, int first, int last) {
                if (IsShown(parent))
                    beginRemoveRows({}, first, last);
            });
    connect(&m_tree, &QAbstractItemModel::rowsRemoved, this, [this](const QModelIndex& parent) {
        if (IsShown(parent))
            endRemoveRows();
    });
    connect(&m_tree, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& changed) {
        if (IsShown(changed.parent()) && !m_columns.isEmpty())
            Q_EMIT dataChanged(index(changed.row(), 0), index(changed.row(), columnCount() - 1));
    });
}

void ResultListModel::Show(const ScopeEntry* entry)
{
    beginResetModel();
    m_shown = entry;
    m_columns.clear();
    m_items.clear();
    m_waiting.clear();
    endResetModel();
}

void ResultListModel::InsertColumn(int column, const QString& title)
{
    const int place = std::clamp(column, 0, columnCount());
    beginInsertColumns({}, place, place);
    m_columns.insert(place, title);
    endInsertColumns();
}

HRESULT ResultListModel::Insert(RESULTDATAITEM* item)
{
    item->itemID = ++m_lastId;
    m_waiting.push_back(*item);
    return S_OK;
}

HRESULT ResultListModel::Remove(HRESULTITEM id)
{
    Flush();
    const auto item = FindItem(m_items, id);
    if (item == m_items.end())
        return E_INVALIDARG;
    const int row = ScopeCount() + static_cast<int>(item - m_items.begin());
    beginRemoveRows({}, row, row);
    m_items.erase(item);
    endRemoveRows();
    return S_OK;
}

void ResultListModel::Clear()
{
    m_waiting.clear();
    if (m_items.empty())
        return;
    beginRemoveRows({}, ScopeCount(), rowCount() - 1);
    m_items.clear();
    endRemoveRows();
}

void ResultListModel::Flush()
{
    if (m_waiting.empty())
        return;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(m_waiting.size()) - 1);
    std::ranges::move(m_waiting, std::back_inserter(m_items));
    m_waiting.clear();
    endInsertRows();
}

const ScopeEntry* ResultListModel::ScopeEntryAt(int row) const
{
    return row >= 0 && row < ScopeCount() ? m_shown->children[static_cast<std::size_t>(row)].get() : nullptr;
}

RESULTDATAITEM ResultListModel::ItemAt(int row) const
{
    if (const ScopeEntry* entry = ScopeEntryAt(row)) {
        RESULTDATAITEM item;
        item.bScopeItem = true;
        item.nImage = entry->image;
        item.lParam = entry->cookie;
        return item;
    }
    return m_items[static_cast<std::size_t>(row - ScopeCount())];
}

MMC_COOKIE ResultListModel::CookieOf(HRESULTITEM id) const
{
    const auto item = FindItem(m_items, id);
    return item != m_items.end() ? item->lParam : nullptr;
}

int ResultListModel::ScopeCount() const
{
    return m_shown != nullptr ? static_cast<int>(m_shown->children.size()) : 0;
}

bool ResultListModel::IsShown(const QModelIndex& treeParent) const
{
    return m_shown != nullptr && treeParent.isValid() && ScopeTreeModel::EntryOf(treeParent) == m_shown;
}

int ResultListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ScopeCount() + static_cast<int>(m_items.size());
}

int ResultListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QString ResultListModel::TextAt(const QModelIndex& index) const
{
    RESULTDATAITEM question = ItemAt(index.row());
    question.mask = RDI_STR;
    question.nCol = index.column();
    return m_textSource(question);
}

QVariant ResultListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return TextAt(index);
    case Qt::DecorationRole:
        return index.column() == 0 ? QVariant(m_images.Icon(ItemAt(index.row()).nImage)) : QVariant();
    default:
        return {};
    }
}

bool ResultListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const ScopeEntry* entry = index.isValid() ? ScopeEntryAt(index.row()) : nullptr;
    if (entry != nullptr && role == Qt::EditRole)
        Q_EMIT RenameRequested(entry->id, value.toString());
    return false;
}

QVariant ResultListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return m_columns.value(section);
}

Qt::ItemFlags ResultListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const ScopeEntry* entry = ScopeEntryAt(index.row());
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    flags.setFlag(Qt::ItemIsEditable, index.column() == 0 && entry != nullptr && m_tree.IsEditable(*entry));
    return flags;
}

} // namespace quenvolta
