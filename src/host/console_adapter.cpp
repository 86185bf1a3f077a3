#include "host/console_adapter.h"

#include "host/console_host.h"

namespace quenvolta
{

ConsoleAdapter::ConsoleAdapter(ConsoleHost& host, ScopeTreeModel& tree, ResultListModel& list)
    : m_host(host)
    , m_nameSpace(host, tree)
    , m_resultData(host, list)
    , m_header(host, list)
{
}

HRESULT ConsoleAdapter::QueryConsoleVerb(IConsoleVerb** verb)
{
    *verb = &m_verbs;
    return S_OK;
}

HRESULT ConsoleAdapter::QueryResultView(IResultView** view)
{
    *view = m_host.ResultView();
    return *view != nullptr ? S_OK : E_FAIL;
}

HRESULT ConsoleAdapter::SelectScopeItem(HSCOPEITEM item)
{
    return m_host.ShowAnew(item);
}

HRESULT ConsoleAdapter::SetStatusText(const QString& text)
{
    Q_EMIT m_host.StatusTextChanged(text);
    return S_OK;
}

HRESULT ConsoleAdapter::UpdateAllViews(const DataObjectPtr& object)
{
    return m_host.UpdateView(object);
}

QWidget* ConsoleAdapter::GetMainWindow()
{
    return m_host.MainWindow();
}

} // namespace quenvolta
