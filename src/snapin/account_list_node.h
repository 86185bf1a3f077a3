#pragma once

#include "snapin/base_node_item.h"
#include "snapin/node_images.h"

#include <QStringList>

#include <algorithm>
#include <memory>
#include <vector>

namespace quenvolta
{

/// A list of accounts (the node List) whose items (Item) are in the result list only.
template <typename List, typename Item>
class CAccountListNode : public CBaseNodeItem<List>
{
public:
    explicit CAccountListNode(const NodeServices& services)
        : CBaseNodeItem<List>(services, kImageFolder, Expandable::No)
    {
    }

    /// Reads the accounts anew, now when they are shown, else when they are shown next.
    void Reload(IConsole& console)
    {
        m_childrenLoaded = false;
        if (!this->IsShown()) {
            this->ForgetError();
            return;
        }
        const bool wasInError = this->IsInError();
        LoadChildren(console);
        if (wasInError || this->IsInError())
            console.SelectScopeItem(this->ScopeItem());
        else
            InsertChildren(console);
    }

    /// Takes out an account that was deleted, without reading the others again.
    void Remove(IConsole& console, const QString& name)
    {
        const auto found = std::ranges::find(m_children, name, &Child::name);
        if (found == m_children.end())
            return;
        const Child child = std::move(*found);
        m_children.erase(found);
        if (this->IsShown())
            console.ResultData().DeleteItem(child.listed);
    }

protected:
    virtual QStringList ReadNames() = 0;

    QString DisplayName() const override { return LoadString(List::kNodeType.displayName); }

    HRESULT OnShow(IConsole& console, bool selecting) override
    {
        if (!selecting)
            return S_OK;
        if (!this->IsInError() && !m_childrenLoaded) {
            LoadChildren(console);
            if (this->IsInError())
                return console.SelectScopeItem(this->ScopeItem()); // as the message view
        }
        if (this->IsInError())
            return CBaseNodeItem<List>::OnShow(console, selecting);
        console.ResultData().DeleteAllRsltItems();
        const HRESULT result = console.Header().InsertColumn(0, LoadString(StringId::kColumnName), kNameColumnWidth);
        return Failed(result) ? result : InsertChildren(console);
    }

    HRESULT OnRefresh(IConsole& console) override
    {
        Reload(console);
        return S_OK;
    }

private:
    struct Child {
        QString name;
        std::shared_ptr<Item> node;
        /// Where it is in the result list, while the list is shown.
        HRESULTITEM listed = 0;
    };

    void LoadChildren(IConsole& console)
    {
        console.ResultData().DeleteAllRsltItems(); // before what they stand for goes
        m_children.clear();
        m_childrenLoaded = this->ReadChildren(List::kErrorTitle, [this] {
            for (const QString& name : ReadNames())
                m_children.push_back({name, std::make_shared<Item>(this->Services(), name)});
        });
    }

    HRESULT InsertChildren(IConsole& console)
    {
        for (Child& child : m_children) {
            RESULTDATAITEM item = child.node->GetResultData();
            const HRESULT result = console.ResultData().InsertItem(&item);
            if (Failed(result))
                return result;
            child.listed = item.itemID;
        }
        return S_OK;
    }

    std::vector<Child> m_children;
    bool m_childrenLoaded = false;
};

} // namespace quenvolta
