#pragma once

#include "platform/mmc/console_name_space.h"

namespace quenvolta
{

class ConsoleHost;
class ScopeTreeModel;

/// The scope tree as the snap-in sees it.
class NamespaceAdapter final : public IConsoleNameSpace
{
public:
    NamespaceAdapter(ConsoleHost& host, ScopeTreeModel& tree)
        : m_host(host)
        , m_tree(tree)
    {
    }

    HRESULT InsertItem(SCOPEDATAITEM* item) override;
    HRESULT DeleteItem(HSCOPEITEM item, bool deleteThis) override;
    HRESULT SetItem(const SCOPEDATAITEM& item) override;

private:
    ConsoleHost& m_host;
    ScopeTreeModel& m_tree;
};

} // namespace quenvolta
