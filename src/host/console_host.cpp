#include "host/console_host.h"

#include "host/menu_collector.h"
#include "platform/mmc/clipboard_format.h"
#include "ui/string_table.h"
#include "ui/wait_cursor.h"

#include <QtEndian>

#include <algorithm>
#include <utility>

namespace quenvolta
{

namespace
{

constexpr int kDefaultColumnWidth = 200;

QString TextFromClipboard(const QByteArray& data)
{
    QString text(data.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<char16_t>(data.constData(), text.size(), text.data());
    while (text.endsWith(QChar(u'\0')))
        text.chop(1);
    return text;
}

} // namespace

/// Stands around each call into the snap-in: a wait cursor, and all that the call inserts appears together.
class ConsoleHost::Dispatch
{
public:
    explicit Dispatch(ConsoleHost& host)
        : m_host(host)
    {
        ++m_host.m_dispatchDepth;
        m_host.m_tree.BeginBatch();
    }
    ~Dispatch()
    {
        m_host.m_tree.EndBatch();
        if (--m_host.m_dispatchDepth != 0)
            return;
        m_host.m_list.Flush();
        if (std::exchange(m_host.m_toolbarsChanged, false))
            Q_EMIT m_host.ToolbarsChanged();
    }
    Dispatch(const Dispatch&) = delete;
    Dispatch& operator=(const Dispatch&) = delete;

private:
    ConsoleHost& m_host;
    WaitCursor m_cursor;
};

ConsoleHost::ConsoleHost()
    : m_tree(m_images, [this](MMC_COOKIE cookie) { return AskScopeName(cookie); })
    , m_list(m_tree, m_images, [this](const RESULTDATAITEM& item) { return AskResultText(item); })
    , m_console(*this, m_tree, m_list)
{
}

ConsoleHost::~ConsoleHost() = default;

void ConsoleHost::Load(std::unique_ptr<IComponentData> data)
{
    const Dispatch dispatch(*this);
    Unload();
    m_data = std::move(data);
    m_data->Initialize(m_console);
    m_data->CreateComponent(&m_component);
    m_component->Initialize(m_console);
    m_component->Notify({}, {.type = MMC_NOTIFY_TYPE::MMCN_ADD_IMAGES, .imageList = &m_images});
    if (auto* extension = dynamic_cast<IExtendControlbar*>(m_component.get()))
        extension->SetControlbar(&m_controlbar);
    const ConsoleTarget root{.scopeItem = m_tree.InsertRoot()};
    QByteArray preloads;
    const DataObjectPtr object = DataObjectOf(root);
    if (object && Succeeded(object->GetData(CCF_SNAPIN_PRELOADS, &preloads)) && preloads.startsWith('\1'))
        m_data->Notify(object, {.type = MMC_NOTIFY_TYPE::MMCN_PRELOAD, .scopeItem = root.scopeItem});
}

void ConsoleHost::Unload()
{
    if (!m_data)
        return;
    Leave();
    m_shown = 0;
    m_target = {};
    m_view = nullptr;
    m_list.Show(nullptr);
    m_tree.Clear();
    m_controlbar.Clear();
    m_component.reset();
    m_data.reset();
}

QString ConsoleHost::ShownNodeType() const
{
    QByteArray type;
    const DataObjectPtr object = DataObjectOf({.scopeItem = m_shown});
    if (!object || Failed(object->GetData(CCF_SZNODETYPE, &type)))
        return {};
    return TextFromClipboard(type);
}

void ConsoleHost::Show(HSCOPEITEM item)
{
    if (item != m_shown)
        ShowAnew(item);
}

HRESULT ConsoleHost::ShowAnew(HSCOPEITEM item)
{
    m_tree.Flush();
    ScopeEntry* entry = m_tree.Find(item);
    if (entry == nullptr)
        return E_INVALIDARG;
    const Dispatch dispatch(*this);
    Leave();
    Enter(*entry);
    return S_OK;
}

void ConsoleHost::Leave()
{
    if (m_shown == 0)
        return;
    Q_EMIT AboutToLeave();
    Notify({.scopeItem = m_shown}, {.type = MMC_NOTIFY_TYPE::MMCN_SHOW, .on = false});
}

void ConsoleHost::Enter(ScopeEntry& entry)
{
    const quint64 showing = ++m_showings;
    const HSCOPEITEM item = entry.id;
    m_shown = item;
    m_list.Show(&entry);
    Q_EMIT DescriptionChanged({});
    Q_EMIT ShownItemChanged();
    Expand(item);

    QString viewType;
    if (Failed(m_component->GetResultViewType(entry.cookie, &viewType)))
        viewType.clear();
    m_view = m_views ? m_views(viewType) : nullptr;
    Q_EMIT ViewChanged(viewType);
    Notify({.scopeItem = item}, {.type = MMC_NOTIFY_TYPE::MMCN_SHOW, .on = true, .scopeItem = item});
    if (showing != m_showings)
        return; // the snap-in had something else shown meanwhile
    if (m_list.columnCount() == 0)
        m_console.Header().InsertColumn(0, LoadString(StringId::kColumnName), kDefaultColumnWidth);
    SetTarget({.scopeItem = item});
}

void ConsoleHost::Expand(HSCOPEITEM item)
{
    ScopeEntry* entry = m_tree.Find(item);
    if (entry == nullptr || entry->isExpanded)
        return;
    entry->isExpanded = true;
    {
        const Dispatch dispatch(*this);
        if (const DataObjectPtr object = DataObjectOf({.scopeItem = item})) {
            m_data->Notify(object, {.type = MMC_NOTIFY_TYPE::MMCN_EXPAND, .on = true, .scopeItem = item});
        }
        m_tree.Flush();
    }
    entry = m_tree.Find(item);
    if (entry != nullptr && entry->children.empty())
        m_tree.UpdateExpandSign(*entry);
}

void ConsoleHost::SetTarget(const ConsoleTarget& target)
{
    m_target = target;
    const Dispatch dispatch(*this);
    m_console.Verbs().Reset();
    if (!target.IsEmpty())
        Notify(target, {.type = MMC_NOTIFY_TYPE::MMCN_SELECT, .on = true});
    if (auto* extension = dynamic_cast<IExtendControlbar*>(m_component.get())) {
        const DataObjectPtr object = DataObjectOf(target);
        extension->ControlbarNotify(object, {.type = MMC_NOTIFY_TYPE::MMCN_SELECT, .on = object != nullptr});
    }
    m_tree.SetEditable(m_console.Verbs().IsEnabled(MMC_CONSOLE_VERB::MMC_VERB_RENAME) ? target.scopeItem : 0);
    Q_EMIT VerbsChanged();
}

ConsoleTarget ConsoleHost::TargetAt(int row) const
{
    if (row < 0 || row >= m_list.rowCount())
        return {};
    if (const ScopeEntry* entry = m_list.ScopeEntryAt(row))
        return {.scopeItem = entry->id};
    const RESULTDATAITEM item = m_list.ItemAt(row);
    return {.resultItem = item.itemID};
}

void ConsoleHost::Open(const ConsoleTarget& target)
{
    Notify(target, {.type = MMC_NOTIFY_TYPE::MMCN_DBLCLICK});
}

void ConsoleHost::Refresh()
{
    if (m_shown != 0)
        Notify({.scopeItem = m_shown}, {.type = MMC_NOTIFY_TYPE::MMCN_REFRESH});
}

void ConsoleHost::Delete(const ConsoleTarget& target)
{
    Notify(target, {.type = MMC_NOTIFY_TYPE::MMCN_DELETE});
}

void ConsoleHost::Rename(HSCOPEITEM item, const QString& name)
{
    Notify({.scopeItem = item}, {.type = MMC_NOTIFY_TYPE::MMCN_RENAME, .text = name});
}

QList<CONTEXTMENUITEM> ConsoleHost::MenuItems()
{
    MenuCollector collector;
    auto* extension = dynamic_cast<IExtendContextMenu*>(m_component.get());
    const DataObjectPtr object = DataObjectOf(m_target);
    if (extension != nullptr && object) {
        const Dispatch dispatch(*this);
        extension->AddMenuItems(object, collector, CCM_INSERTIONALLOWED_ALL);
    }
    return collector.items;
}

void ConsoleHost::RunCommand(int command)
{
    const QList<CONTEXTMENUITEM> items = MenuItems(); // its state may have changed since it was shown
    const bool isOffered = std::ranges::any_of(
        items, [command](const CONTEXTMENUITEM& item) { return item.lCommandID == command && !item.isGrayed; });
    auto* extension = dynamic_cast<IExtendContextMenu*>(m_component.get());
    if (extension == nullptr || !isOffered)
        return;
    const Dispatch dispatch(*this);
    extension->Command(command, DataObjectOf(m_target));
}

void ConsoleHost::PressButton(int command)
{
    auto* extension = dynamic_cast<IExtendControlbar*>(m_component.get());
    const DataObjectPtr object = DataObjectOf(m_target);
    if (extension == nullptr || !object)
        return;
    const Dispatch dispatch(*this);
    extension->ControlbarNotify(object, {.type = MMC_NOTIFY_TYPE::MMCN_BTN_CLICK, .command = command});
}

void ConsoleHost::ShowHelp()
{
    Notify(m_target, {.type = MMC_NOTIFY_TYPE::MMCN_CONTEXTHELP});
}

void ConsoleHost::LeaveItem(const ScopeEntry& entry, bool deleteThis)
{
    const ScopeEntry* shown = m_tree.Find(m_shown);
    for (const ScopeEntry* above = shown; above != nullptr; above = above->parent) {
        if (above != &entry)
            continue;
        if (deleteThis)
            Show(entry.parent->id);
        else if (shown != &entry)
            Show(entry.id);
        return;
    }
}

HRESULT ConsoleHost::UpdateView(const DataObjectPtr& object)
{
    const Dispatch dispatch(*this);
    return m_component->Notify(object, {.type = MMC_NOTIFY_TYPE::MMCN_VIEW_CHANGE});
}

HRESULT ConsoleHost::Notify(const ConsoleTarget& target, const MMCNotification& notification)
{
    const DataObjectPtr object = DataObjectOf(target);
    if (!object)
        return E_INVALIDARG;
    const Dispatch dispatch(*this);
    return m_component->Notify(object, notification);
}

MMC_COOKIE ConsoleHost::CookieOf(const ConsoleTarget& target) const
{
    if (const ScopeEntry* entry = m_tree.Find(target.scopeItem))
        return entry->cookie;
    return m_list.CookieOf(target.resultItem);
}

DataObjectPtr ConsoleHost::DataObjectOf(const ConsoleTarget& target) const
{
    DataObjectPtr object;
    if (!target.several.empty()) {
        QList<MMC_COOKIE> cookies;
        for (const ConsoleTarget& each : target.several) {
            if (const MMC_COOKIE cookie = CookieOf(each))
                cookies.append(cookie);
        }
        m_component->QueryMultiSelectObject(cookies, &object);
    } else if (const ScopeEntry* entry = m_tree.Find(target.scopeItem)) {
        m_data->QueryDataObject(entry->cookie, DATA_OBJECT_TYPES::CCT_SCOPE, &object);
    } else if (const MMC_COOKIE cookie = CookieOf(target)) {
        m_component->QueryDataObject(cookie, DATA_OBJECT_TYPES::CCT_RESULT, &object);
    }
    return object;
}

QString ConsoleHost::AskScopeName(MMC_COOKIE cookie) const
{
    SCOPEDATAITEM question;
    question.mask = SDI_STR;
    question.lParam = cookie;
    return Succeeded(m_data->GetDisplayInfo(&question)) ? question.displayname : QString();
}

QString ConsoleHost::AskResultText(RESULTDATAITEM item) const
{
    return Succeeded(m_component->GetDisplayInfo(&item)) ? item.str : QString();
}

} // namespace quenvolta
