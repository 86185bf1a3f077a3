#pragma once

#include "host/header_adapter.h"
#include "host/namespace_adapter.h"
#include "host/result_data_adapter.h"
#include "host/verb_adapter.h"
#include "platform/mmc/console.h"

namespace quenvolta
{

/// The console as the snap-in sees it.
class ConsoleAdapter final : public IConsole
{
public:
    ConsoleAdapter(ConsoleHost& host, ScopeTreeModel& tree, ResultListModel& list);

    IConsoleNameSpace& NameSpace() override { return m_nameSpace; }
    IResultData& ResultData() override { return m_resultData; }
    IHeaderCtrl& Header() override { return m_header; }
    HRESULT QueryConsoleVerb(IConsoleVerb** verb) override;
    HRESULT QueryResultView(IResultView** view) override;
    HRESULT SelectScopeItem(HSCOPEITEM item) override;
    HRESULT SetStatusText(const QString& text) override;
    HRESULT UpdateAllViews(const DataObjectPtr& object) override;
    QWidget* GetMainWindow() override;

    VerbAdapter& Verbs() { return m_verbs; }
    const VerbAdapter& Verbs() const { return m_verbs; }

private:
    ConsoleHost& m_host;
    NamespaceAdapter m_nameSpace;
    ResultDataAdapter m_resultData;
    HeaderAdapter m_header;
    VerbAdapter m_verbs;
};

} // namespace quenvolta
