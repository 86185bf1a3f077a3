#include "accounts/permission_list_model.h"

#include "accounts/access_level_text.h"
#include "ui/string_table.h"

#include <algorithm>
#include <array>
#include <functional>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kNameColumn = 0;
constexpr int kColumns = 2;

QString KindText(AccountKind kind)
{
    constexpr std::array kTexts{StringId::kEveryone, StringId::kUserName, StringId::kGroupName,
                                StringId::kWindowsAccount};
    return LoadString(kTexts[static_cast<std::size_t>(kind)]);
}

} // namespace

void PermissionListModel::SetItems(const QList<PermissionItem>& items, const QString& computerName)
{
    beginResetModel();
    m_items = items;
    m_computerName = computerName;
    NumberRows();
    endResetModel();
}

void PermissionListModel::NumberRows()
{
    m_places.clear();
    for (int row = 0; row < m_items.size(); ++row)
        m_places.insert(m_items[row].account, row);
}

PermissionList PermissionListModel::ExplicitEntries() const
{
    PermissionList entries;
    for (const PermissionItem& item : m_items) {
        if (item.explicitLevel)
            entries.append({item.account, *item.explicitLevel});
    }
    return entries;
}

void PermissionListModel::SetExplicitLevel(const QList<int>& rows, std::optional<AccessLevel> level)
{
    if (rows.isEmpty())
        return;
    for (const int row : rows)
        m_items[row].explicitLevel = level;
    const auto [first, last] = std::ranges::minmax(rows);
    Q_EMIT dataChanged(index(first, 0), index(last, kColumns - 1));
}

void PermissionListModel::Append(const QList<PermissionItem>& items)
{
    if (items.isEmpty())
        return;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(items.size()) - 1);
    m_items += items;
    NumberRows();
    endInsertRows();
}

void PermissionListModel::RemoveExplicit(QList<int> rows)
{
    std::ranges::sort(rows, std::ranges::greater());
    for (const int row : rows) {
        if (!m_items[row].explicitLevel)
            continue;
        if (m_items[row].inherited) {
            SetExplicitLevel({row}, {});
            continue;
        }
        beginRemoveRows({}, row, row);
        m_items.removeAt(row);
        endRemoveRows();
    }
    NumberRows();
}

int PermissionListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

int PermissionListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QVariant PermissionListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PermissionItem& item = m_items[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == kNameColumn)
            return item.name;
        return item.ShownLevel() ? AccessLevelText(*item.ShownLevel()) : QString();
    case Qt::DecorationRole:
        if (index.column() == kNameColumn)
            return m_icons.IconOf(item.account.kind, item.explicitLevel.has_value());
        return {};
    case Qt::AccessibleDescriptionRole:
        return KindText(item.account.kind); // else only the icon tells a group from a user of the same name
    case Qt::ToolTipRole:
        return ToolTip(item).toHtmlEscaped();
    default:
        return {};
    }
}

QVariant PermissionListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return LoadString(section == kNameColumn ? StringId::kColumnName : StringId::kColumnPermissions);
}

QString PermissionListModel::ToolTip(const PermissionItem& item) const
{
    const auto text = [](AccessLevel level) { return AccessLevelText(level); };
    if (!item.inherited)
        return item.explicitLevel ? LoadString(StringId::kSetHere, text(*item.explicitLevel)) : QString();
    const QString place = PlaceText(item.inherited->from);
    if (!item.explicitLevel)
        return LoadString(StringId::kInheritedFrom, text(item.inherited->level), place);
    return LoadString(StringId::kSetHereInsteadOf, text(*item.explicitLevel), text(item.inherited->level), place);
}

QString PermissionListModel::PlaceText(const TreePosition& place) const
{
    if (!place.repositoryName.isEmpty())
        return u"/svn/"_s + place.repositoryName + place.path;
    return m_computerName.isEmpty() ? LoadString(StringId::kWholeServer)
                                    : LoadString(StringId::kWholeServerNamed, m_computerName);
}

} // namespace quenvolta
