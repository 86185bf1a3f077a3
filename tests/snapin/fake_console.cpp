#include "fake_console.h"

#include "platform/mmc/result_view_type.h"

namespace quenvolta::test
{

namespace
{

constexpr HSCOPEITEM kRoot = 1;

} // namespace

void FakeConsole::LoadBelowAnother(IComponentData& data)
{
    m_data = &data;
    m_data->Initialize(*this);
    m_data->CreateComponent(&m_component);
    m_component->Initialize(*this);
    m_last = kRoot;
    m_items[kRoot] = {};
}

void FakeConsole::Load(IComponentData& data)
{
    LoadBelowAnother(data);
    Expand({});
    Select({});
}

void FakeConsole::Expand(const QString& path)
{
    m_data->Notify(Object(path), {.type = MMC_NOTIFY_TYPE::MMCN_EXPAND, .on = true, .scopeItem = Find(path)});
}

void FakeConsole::Select(const QString& path)
{
    Show(Find(path));
}

HRESULT FakeConsole::Notify(const QString& path, MMC_NOTIFY_TYPE type, const QString& text)
{
    return m_component->Notify(Object(path), {.type = type, .on = true, .text = text});
}

HRESULT FakeConsole::NotifyListed(const QString& name, MMC_NOTIFY_TYPE type)
{
    verbs.clear();
    return m_component->Notify(ListedObject(name), {.type = type, .on = true});
}

QStringList FakeConsole::Children(const QString& path) const
{
    QStringList names;
    for (const HSCOPEITEM child : m_items[Find(path)].children)
        names.append(NameOf(child));
    return names;
}

QString FakeConsole::Text(const QString& path, int column) const
{
    RESULTDATAITEM question;
    question.mask = RDI_STR;
    question.nCol = column;
    question.lParam = Item(path).lParam;
    m_component->GetDisplayInfo(&question);
    return question.str;
}

DataObjectPtr FakeConsole::Object(const QString& path) const
{
    DataObjectPtr object;
    const HSCOPEITEM item = Find(path);
    if (item != 0)
        m_data->QueryDataObject(m_items[item].item.lParam, DATA_OBJECT_TYPES::CCT_SCOPE, &object);
    return object;
}

DataObjectPtr FakeConsole::ListedObject(const QString& name) const
{
    DataObjectPtr object;
    m_component->QueryDataObject(m_listed[Listed().indexOf(name)].lParam, DATA_OBJECT_TYPES::CCT_RESULT, &object);
    return object;
}

DataObjectPtr FakeConsole::SeveralObject(const QStringList& paths) const
{
    QList<MMC_COOKIE> cookies;
    for (const QString& path : paths)
        cookies.append(m_items[Find(path)].item.lParam);
    DataObjectPtr object;
    m_component->QueryMultiSelectObject(cookies, &object);
    return object;
}

DataObjectPtr FakeConsole::SeveralListedObject(const QStringList& names) const
{
    QList<MMC_COOKIE> cookies;
    for (const QString& name : names)
        cookies.append(m_listed[Listed().indexOf(name)].lParam);
    DataObjectPtr object;
    m_component->QueryMultiSelectObject(cookies, &object);
    return object;
}

QStringList FakeConsole::Listed() const
{
    QStringList names;
    for (RESULTDATAITEM item : m_listed) {
        item.mask = RDI_STR;
        m_component->GetDisplayInfo(&item);
        names.append(item.str);
    }
    return names;
}

HRESULT FakeConsole::QueryConsoleVerb(IConsoleVerb** verb)
{
    *verb = this;
    return S_OK;
}

HRESULT FakeConsole::QueryResultView(IResultView** view)
{
    *view = viewType == CLSID_MessageView ? this : nullptr;
    return *view != nullptr ? S_OK : E_FAIL;
}

HRESULT FakeConsole::SelectScopeItem(HSCOPEITEM item)
{
    Show(item);
    return S_OK;
}

HRESULT FakeConsole::SetStatusText(const QString& text)
{
    statusTexts.append(text);
    return S_OK;
}

HRESULT FakeConsole::UpdateAllViews(const DataObjectPtr& object)
{
    ++viewUpdates;
    return m_component->Notify(object, {.type = MMC_NOTIFY_TYPE::MMCN_VIEW_CHANGE});
}

void FakeConsole::Show(HSCOPEITEM item)
{
    if (const DataObjectPtr left = m_shown != 0 ? Object(PathOf(m_shown)) : nullptr)
        m_component->Notify(left, {.type = MMC_NOTIFY_TYPE::MMCN_SHOW, .on = false});
    m_shown = item;
    selected = PathOf(item);
    columns.clear();
    m_listed.clear();
    verbs.clear();
    description.clear();
    Clear();
    const DataObjectPtr object = Object(selected);
    m_component->GetResultViewType(m_items[item].item.lParam, &viewType);
    m_component->Notify(object, {.type = MMC_NOTIFY_TYPE::MMCN_SHOW, .on = true, .scopeItem = item});
    m_component->Notify(object, {.type = MMC_NOTIFY_TYPE::MMCN_SELECT, .on = true});
}

HRESULT FakeConsole::InsertItem(SCOPEDATAITEM* item)
{
    if (!m_items.contains(item->relativeID))
        return E_INVALIDARG;
    ++insertions;
    item->ID = ++m_last;
    const bool before = (item->mask & SDI_NEXT) != 0;
    const HSCOPEITEM parent = before ? m_items[item->relativeID].parent : item->relativeID;
    QList<HSCOPEITEM>& siblings = m_items[parent].children;
    siblings.insert(before ? siblings.indexOf(item->relativeID) : siblings.size(), item->ID);
    m_items[item->ID] = {.item = *item, .parent = parent};
    return S_OK;
}

HRESULT FakeConsole::DeleteItem(HSCOPEITEM item, bool deleteThis)
{
    if (!m_items.contains(item))
        return E_INVALIDARG;
    const QList<HSCOPEITEM> children = m_items[item].children;
    for (const HSCOPEITEM child : children)
        DeleteItem(child, true);
    if (!deleteThis)
        return S_OK;
    const HSCOPEITEM parent = m_items[item].parent;
    if (m_shown == item)
        Show(parent);
    m_items[parent].children.removeOne(item);
    m_items.remove(item);
    return S_OK;
}

HRESULT FakeConsole::SetItem(const SCOPEDATAITEM& item)
{
    if (!m_items.contains(item.ID))
        return E_INVALIDARG;
    if (item.mask & SDI_IMAGE)
        m_items[item.ID].item.nImage = item.nImage;
    return S_OK;
}

HRESULT FakeConsole::InsertItem(RESULTDATAITEM* item)
{
    item->itemID = ++m_last;
    m_listed.append(*item);
    return S_OK;
}

HRESULT FakeConsole::DeleteItem(HRESULTITEM item)
{
    return m_listed.removeIf([item](const RESULTDATAITEM& listed) { return listed.itemID == item; }) == 1
               ? S_OK
               : E_INVALIDARG;
}

HRESULT FakeConsole::DeleteAllRsltItems()
{
    m_listed.clear();
    return S_OK;
}

HRESULT FakeConsole::SetDescBarText(const QString& text)
{
    description = text;
    return S_OK;
}

HRESULT FakeConsole::InsertColumn(int column, const QString& title, int width)
{
    columns.insert(column, QStringLiteral("%1 %2").arg(title).arg(width));
    return S_OK;
}

HRESULT FakeConsole::SetVerbState(MMC_CONSOLE_VERB verb, MMC_BUTTON_STATE /*buttonState*/, bool /*state*/)
{
    verbs.insert(verb);
    return S_OK;
}

HRESULT FakeConsole::SetTitleText(const QString& title)
{
    errorTitle = title;
    return S_OK;
}

HRESULT FakeConsole::SetBodyText(const QString& body)
{
    errorBody = body;
    return S_OK;
}

HRESULT FakeConsole::SetIcon(IconIdentifier /*icon*/)
{
    return S_OK;
}

HRESULT FakeConsole::Clear()
{
    errorTitle.clear();
    errorBody.clear();
    return S_OK;
}

HSCOPEITEM FakeConsole::Find(const QString& path) const
{
    HSCOPEITEM found = kRoot;
    for (const QString& name : path.split(u'/', Qt::SkipEmptyParts)) {
        const QList<HSCOPEITEM> children = m_items[found].children;
        const auto child = std::ranges::find_if(children, [&](HSCOPEITEM id) { return NameOf(id) == name; });
        if (child == children.end())
            return 0;
        found = *child;
    }
    return found;
}

QString FakeConsole::NameOf(HSCOPEITEM item) const
{
    SCOPEDATAITEM question;
    question.mask = SDI_STR;
    question.lParam = m_items[item].item.lParam;
    m_data->GetDisplayInfo(&question);
    return question.displayname;
}

QString FakeConsole::PathOf(HSCOPEITEM item) const
{
    const HSCOPEITEM parent = m_items[item].parent;
    if (item == kRoot || parent == 0)
        return {};
    return parent == kRoot ? NameOf(item) : PathOf(parent) + u'/' + NameOf(item);
}

} // namespace quenvolta::test
