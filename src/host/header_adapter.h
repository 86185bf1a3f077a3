#pragma once

#include "platform/mmc/header_ctrl.h"

namespace quenvolta
{

class ConsoleHost;
class ResultListModel;

/// The columns of the result list as the snap-in sees them.
class HeaderAdapter final : public IHeaderCtrl
{
public:
    HeaderAdapter(ConsoleHost& host, ResultListModel& list)
        : m_host(host)
        , m_list(list)
    {
    }

    HRESULT InsertColumn(int column, const QString& title, int width) override;

private:
    ConsoleHost& m_host;
    ResultListModel& m_list;
};

} // namespace quenvolta
