#pragma once

#include "foundation/exception.h"
#include "platform/mmc/console.h"
#include "platform/mmc/console_name_space.h"
#include "platform/mmc/console_verb.h"
#include "platform/mmc/header_ctrl.h"
#include "platform/mmc/message_view.h"
#include "platform/mmc/result_data.h"
#include "platform/mmc/result_view_type.h"
#include "snapin/base_node.h"
#include "snapin/command_handler.h"
#include "snapin/menu_resources.h"
#include "snapin/node_services.h"
#include "snapin/quenvolta_component.h"
#include "snapin/snap_in_item_impl.h"
#include "snapin/toolbar_resources.h"
#include "ui/string_table.h"

#include <algorithm>
#include <span>
#include <utility>

namespace quenvolta
{

/// True for nodes that may have children in the scope tree, so that the console offers to expand them.
enum class Expandable : bool {
    No,
    Yes,
};

inline constexpr int kNameColumnWidth = 200;

/// The base of every node: what the console knows of it, its error state, and one operation for each notification.
template <typename T>
class CBaseNodeItem : public CSnapInItemImpl<T>, public IBaseNode
{
public:
    CBaseNodeItem(const NodeServices& services, int image, Expandable expandable)
        : m_services(services)
    {
        m_scopeData.mask = SDI_STR | SDI_IMAGE | SDI_OPENIMAGE | SDI_PARAM;
        if (expandable == Expandable::No)
            m_scopeData.mask |= SDI_CHILDREN;
        m_scopeData.nImage = image;
        m_scopeData.nOpenImage = image;
        m_scopeData.lParam = this;
    }

    HRESULT Notify(IConsole& console, const MMCNotification& notification) override
    {
        switch (notification.type) {
        case MMC_NOTIFY_TYPE::MMCN_EXPAND:
            return OnExpand(console, notification.on, notification.scopeItem);
        case MMC_NOTIFY_TYPE::MMCN_SHOW:
            m_shown = notification.on;
            return OnShow(console, notification.on);
        case MMC_NOTIFY_TYPE::MMCN_DBLCLICK:
            return OnDblClick(console);
        case MMC_NOTIFY_TYPE::MMCN_SELECT:
            return OnSelect(console, notification.on);
        case MMC_NOTIFY_TYPE::MMCN_RENAME:
            return OnRename(console, notification.text);
        case MMC_NOTIFY_TYPE::MMCN_DELETE:
            return OnDelete(console);
        case MMC_NOTIFY_TYPE::MMCN_REFRESH:
            return OnRefresh(console);
        case MMC_NOTIFY_TYPE::MMCN_VIEW_CHANGE:
            return OnViewChange(console);
        case MMC_NOTIFY_TYPE::MMCN_PRELOAD:
            return OnPreload(console, notification.scopeItem);
        case MMC_NOTIFY_TYPE::MMCN_COLUMNS_CHANGED:
            return OnColumnsChanged(console);
        case MMC_NOTIFY_TYPE::MMCN_ADD_IMAGES:
        case MMC_NOTIFY_TYPE::MMCN_BTN_CLICK:
        case MMC_NOTIFY_TYPE::MMCN_CONTEXTHELP:
        case MMC_NOTIFY_TYPE::MMCN_SNAPINHELP:
            break;
        }
        return E_NOTIMPL;
    }

    HRESULT GetScopePaneInfo(SCOPEDATAITEM* item) override
    {
        if (item->mask & SDI_STR)
            item->displayname = this->DisplayName();
        if (item->mask & SDI_IMAGE)
            item->nImage = m_scopeData.nImage;
        if (item->mask & SDI_OPENIMAGE)
            item->nOpenImage = m_scopeData.nOpenImage;
        if (item->mask & SDI_PARAM)
            item->lParam = m_scopeData.lParam;
        if (item->mask & SDI_CHILDREN)
            item->cChildren = m_scopeData.cChildren;
        return S_OK;
    }

    HRESULT GetResultViewType(QString* viewType) override
    {
        *viewType = IsInError() ? QString(CLSID_MessageView) : QString();
        return S_OK;
    }

    HRESULT GetResultPaneInfo(RESULTDATAITEM* item) override
    {
        if (item->mask & RDI_STR)
            item->str = GetResultPaneColInfo(item->nCol);
        if (item->mask & RDI_IMAGE)
            item->nImage = m_scopeData.nImage;
        if (item->mask & RDI_PARAM)
            item->lParam = m_scopeData.lParam;
        return S_OK;
    }

    HRESULT AddMenuItems(IContextMenuCallback& callback, std::uint32_t insertionAllowed) override
    {
        return AddMenuResource(GetMenuId(), insertionAllowed, callback,
                               [this](int command) { return GetCommandState(command); });
    }

    HRESULT Command(IConsole& console, int command) override
    {
        const CommandHandler<T>* handler = FindHandler(command);
        if (handler == nullptr || GetCommandState(command) != CommandState::Enabled)
            return S_FALSE;
        (static_cast<T&>(*this).*handler->run)(console);
        return S_OK;
    }

    HRESULT QueryPagesFor() override { return S_FALSE; }
    QList<int> Toolbars() const override { return {}; }

    void UpdateToolbars(IQuenvoltaComponent& component) override
    {
        for (const int resource : Toolbars()) {
            IToolbar* toolbar = component.GetToolbar(resource);
            if (toolbar == nullptr)
                continue;
            for (const MMCBUTTON& button : ToolbarButtons(resource)) {
                const CommandState state = GetCommandState(button.idCommand);
                toolbar->SetButtonState(button.idCommand, MMC_BUTTON_STATE::ENABLED, state == CommandState::Enabled);
                toolbar->SetButtonState(button.idCommand, MMC_BUTTON_STATE::HIDDEN, state == CommandState::Hidden);
            }
        }
    }

    SCOPEDATAITEM& GetScopeData() override { return m_scopeData; }

    RESULTDATAITEM GetResultData() override
    {
        RESULTDATAITEM item;
        item.mask = RDI_STR | RDI_IMAGE | RDI_PARAM;
        item.nImage = m_scopeData.nImage;
        item.lParam = m_scopeData.lParam;
        return item;
    }

    bool IsInError() const { return !m_errorTitle.isEmpty(); }
    /// Where the node is in the scope tree; 0 until it is inserted.
    HSCOPEITEM ScopeItem() const { return m_scopeData.ID; }

protected:
    /// The menu of the node (resources/menus.def).
    virtual int GetMenuId() = 0;
    /// The rule by which a command is enabled, whether or not its dialog is there.
    virtual CommandState RuleOf(int /*command*/) { return CommandState::Enabled; }
    virtual QString GetResultPaneColInfo(int /*column*/) { return this->DisplayName(); }
    virtual HRESULT OnExpand(IConsole& /*console*/, bool /*expanding*/, HSCOPEITEM /*item*/) { return S_OK; }
    virtual HRESULT OnShow(IConsole& console, bool selecting)
    {
        if (selecting && IsInError())
            ShowErrorView(console);
        return S_OK;
    }
    virtual HRESULT OnDblClick(IConsole& console) { return console.SelectScopeItem(ScopeItem()); }
    virtual HRESULT OnSelect(IConsole& console, bool selected)
    {
        IConsoleVerb* verb = nullptr;
        const HRESULT result = console.QueryConsoleVerb(&verb);
        if (Succeeded(result) && selected)
            SetVerbs(*verb);
        return result;
    }
    virtual HRESULT OnRename(IConsole& /*console*/, const QString& /*name*/) { return E_NOTIMPL; }
    virtual HRESULT OnDelete(IConsole& /*console*/) { return E_NOTIMPL; }
    virtual HRESULT OnRefresh(IConsole& /*console*/) { return E_NOTIMPL; }
    virtual HRESULT OnViewChange(IConsole& /*console*/) { return E_NOTIMPL; }
    virtual void SetVerbs(IConsoleVerb& verb) { Enable(verb, MMC_CONSOLE_VERB::MMC_VERB_REFRESH); }
    virtual HRESULT OnPreload(IConsole& /*console*/, HSCOPEITEM /*item*/) { return E_NOTIMPL; }
    virtual HRESULT OnColumnsChanged(IConsole& /*console*/) { return E_NOTIMPL; }

    /// The state of a command: its rule, and disabled without its dialog.
    CommandState GetCommandState(int command)
    {
        const CommandState state = RuleOf(command);
        const CommandHandler<T>* handler = FindHandler(command);
        const bool isThere =
            handler != nullptr && (handler->dialog == DialogKind::None || m_services.dialogs.Has(handler->dialog));
        return state == CommandState::Enabled && !isThere ? CommandState::Grayed : state;
    }

    /// What a dialog is opened with.
    DialogRequest RequestFor(IConsole& console) const
    {
        return {m_services.model, m_services.messages, m_services.preferences, m_services.shell,
                console.GetMainWindow()};
    }
    bool OpenDialog(DialogKind kind, const DialogRequest& request) const
    {
        return m_services.dialogs.Open(kind, request);
    }

    CModel& Model() const { return m_services.model; }
    IcMessages& Messages() const { return m_services.messages; }
    const NodeServices& Services() const { return m_services; }
    /// True while a result pane shows the node.
    bool IsShown() const { return m_shown; }
    int Image() const { return m_scopeData.nImage; }

    static void Enable(IConsoleVerb& verb, MMC_CONSOLE_VERB which)
    {
        verb.SetVerbState(which, MMC_BUTTON_STATE::ENABLED, true);
    }

    void SetScopeItem(HSCOPEITEM item) { m_scopeData.ID = item; }

    /// Runs what reads the node's children. A failure puts the node into the error state, a success ends it.
    template <typename Read>
    bool ReadChildren(int errorTitle, Read&& read)
    {
        try {
            std::forward<Read>(read)();
        } catch (const Exception& exception) {
            m_errorTitle = LoadString(errorTitle);
            m_errorBody = exception.GetMessage();
            return false;
        }
        ForgetError();
        return true;
    }

    void ForgetError()
    {
        m_errorTitle.clear();
        m_errorBody.clear();
    }

    /// Inserts a child as the last one below this node, or before a sibling.
    HRESULT InsertChild(IConsole& console, CSnapInItem& child, HSCOPEITEM before = 0) const
    {
        SCOPEDATAITEM& item = child.GetScopeData();
        const std::uint32_t mask = item.mask;
        item.mask |= before != 0 ? SDI_NEXT : SDI_PARENT;
        item.relativeID = before != 0 ? before : ScopeItem();
        const HRESULT result = console.NameSpace().InsertItem(&item);
        item.mask = mask;
        return result;
    }

    HRESULT SetImage(IConsole& console, int image)
    {
        if (m_scopeData.nImage == image)
            return S_OK;
        m_scopeData.nImage = image;
        m_scopeData.nOpenImage = image;
        return UpdateScopeItem(console, SDI_IMAGE | SDI_OPENIMAGE);
    }

    /// Has the console take what the mask names anew.
    HRESULT UpdateScopeItem(IConsole& console, std::uint32_t mask)
    {
        if (ScopeItem() == 0)
            return S_OK;
        SCOPEDATAITEM item = m_scopeData;
        item.mask = mask;
        return console.NameSpace().SetItem(item);
    }

private:
    void ShowErrorView(IConsole& console)
    {
        IResultView* view = nullptr;
        if (Failed(console.QueryResultView(&view)))
            return;
        if (auto* message = dynamic_cast<IMessageView*>(view)) {
            message->SetIcon(IconIdentifier::Icon_Error);
            message->SetTitleText(m_errorTitle);
            message->SetBodyText(m_errorBody);
        }
    }

    const CommandHandler<T>* FindHandler(int command) const
    {
        const std::span<const CommandHandler<T>> handlers = T::Commands();
        const auto found = std::ranges::find(handlers, command, &CommandHandler<T>::command);
        return found != handlers.end() ? &*found : nullptr;
    }

    const NodeServices& m_services;
    SCOPEDATAITEM m_scopeData;
    QString m_errorTitle;
    QString m_errorBody;
    bool m_shown = false;
};

} // namespace quenvolta
