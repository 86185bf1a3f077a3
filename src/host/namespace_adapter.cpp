#include "host/namespace_adapter.h"

#include "host/console_host.h"
#include "host/scope_tree_model.h"

namespace quenvolta
{

HRESULT NamespaceAdapter::InsertItem(SCOPEDATAITEM* item)
{
    return m_tree.Insert(item);
}

HRESULT NamespaceAdapter::DeleteItem(HSCOPEITEM item, bool deleteThis)
{
    ScopeEntry* entry = m_tree.Find(item);
    if (entry == nullptr || (deleteThis && entry == m_tree.Root()))
        return E_INVALIDARG;
    m_tree.Flush();
    m_host.LeaveItem(*entry, deleteThis);
    m_tree.Remove(*entry, deleteThis);
    return S_OK;
}

HRESULT NamespaceAdapter::SetItem(const SCOPEDATAITEM& item)
{
    return m_tree.Change(item);
}

} // namespace quenvolta
