#pragma once

#include "platform/mmc/component_data.h"
#include "platform/mmc/console.h"
#include "platform/mmc/console_name_space.h"
#include "platform/mmc/console_verb.h"
#include "platform/mmc/header_ctrl.h"
#include "platform/mmc/message_view.h"
#include "platform/mmc/result_data.h"

#include <QMap>
#include <QSet>
#include <QStringList>

#include <memory>

namespace quenvolta::test
{

/// A console without a window: a tree of names, the lists of what was asked of it, and the person's actions.
class FakeConsole final : public IConsole,
                          private IConsoleNameSpace,
                          private IResultData,
                          private IHeaderCtrl,
                          private IConsoleVerb,
                          private IMessageView
{
public:
    void Load(IComponentData& data);
    /// The same without a root of the snap-in: item 1 is another one's node.
    void LoadBelowAnother(IComponentData& data);

    // What a person does. The item is named by its path from the root ("Repositories/web"); empty for the root.
    void Expand(const QString& path);
    void Select(const QString& path);
    HRESULT Notify(const QString& path, MMC_NOTIFY_TYPE type, const QString& text = {});
    HRESULT NotifyListed(const QString& name, MMC_NOTIFY_TYPE type);

    /// The names below an item, in their order.
    QStringList Children(const QString& path) const;
    bool Contains(const QString& path) const { return Find(path) != 0; }
    SCOPEDATAITEM Item(const QString& path) const { return m_items[Find(path)].item; }
    /// The text of a column of a scope item in its parent's list.
    QString Text(const QString& path, int column) const;
    DataObjectPtr Object(const QString& path) const;
    QStringList Listed() const;
    DataObjectPtr ListedObject(const QString& name) const;
    /// One object for several scope items.
    DataObjectPtr SeveralObject(const QStringList& paths) const;
    DataObjectPtr SeveralListedObject(const QStringList& names) const;
    IComponent& Component() { return *m_component; }

    QStringList columns;
    QStringList statusTexts;
    QSet<MMC_CONSOLE_VERB> verbs;
    QString description;
    QString viewType;
    QString errorTitle;
    QString errorBody;
    int insertions = 0;
    int viewUpdates = 0;
    QString selected;

    IConsoleNameSpace& NameSpace() override { return *this; }
    IResultData& ResultData() override { return *this; }
    IHeaderCtrl& Header() override { return *this; }
    HRESULT QueryConsoleVerb(IConsoleVerb** verb) override;
    HRESULT QueryResultView(IResultView** view) override;
    HRESULT SelectScopeItem(HSCOPEITEM item) override;
    HRESULT SetStatusText(const QString& text) override;
    HRESULT UpdateAllViews(const DataObjectPtr& object) override;
    QWidget* GetMainWindow() override { return nullptr; }

private:
    struct Entry {
        SCOPEDATAITEM item;
        HSCOPEITEM parent = 0;
        QList<HSCOPEITEM> children = {};
    };

    HRESULT InsertItem(SCOPEDATAITEM* item) override;
    HRESULT DeleteItem(HSCOPEITEM item, bool deleteThis) override;
    HRESULT SetItem(const SCOPEDATAITEM& item) override;
    HRESULT InsertItem(RESULTDATAITEM* item) override;
    HRESULT DeleteItem(HRESULTITEM item) override;
    HRESULT DeleteAllRsltItems() override;
    HRESULT SetDescBarText(const QString& text) override;
    HRESULT InsertColumn(int column, const QString& title, int width) override;
    HRESULT SetVerbState(MMC_CONSOLE_VERB verb, MMC_BUTTON_STATE buttonState, bool state) override;
    HRESULT SetTitleText(const QString& title) override;
    HRESULT SetBodyText(const QString& body) override;
    HRESULT SetIcon(IconIdentifier icon) override;
    HRESULT Clear() override;

    HSCOPEITEM Find(const QString& path) const;
    QString NameOf(HSCOPEITEM item) const;
    QString PathOf(HSCOPEITEM item) const;
    void Show(HSCOPEITEM item);

    IComponentData* m_data = nullptr;
    std::unique_ptr<IComponent> m_component;
    QMap<HSCOPEITEM, Entry> m_items;
    QList<RESULTDATAITEM> m_listed;
    HSCOPEITEM m_last = 0;
    HSCOPEITEM m_shown = 0;
};

} // namespace quenvolta::test
