#pragma once

#include "platform/mmc/result_data.h"

namespace quenvolta
{

class ConsoleHost;
class ResultListModel;

/// The result list as the snap-in sees it.
class ResultDataAdapter final : public IResultData
{
public:
    ResultDataAdapter(ConsoleHost& host, ResultListModel& list)
        : m_host(host)
        , m_list(list)
    {
    }

    HRESULT InsertItem(RESULTDATAITEM* item) override;
    HRESULT DeleteItem(HRESULTITEM item) override;
    HRESULT DeleteAllRsltItems() override;
    HRESULT SetDescBarText(const QString& text) override;

private:
    ConsoleHost& m_host;
    ResultListModel& m_list;
};

} // namespace quenvolta
