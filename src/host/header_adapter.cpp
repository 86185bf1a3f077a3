#include "host/header_adapter.h"

#include "host/console_host.h"
#include "host/result_list_model.h"

namespace quenvolta
{

HRESULT HeaderAdapter::InsertColumn(int column, const QString& title, int width)
{
    if (column < 0 || column > m_list.columnCount())
        return E_INVALIDARG;
    m_list.InsertColumn(column, title);
    Q_EMIT m_host.ColumnInserted(column, width);
    return S_OK;
}

} // namespace quenvolta
