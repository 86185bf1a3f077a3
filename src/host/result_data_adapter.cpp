#include "host/result_data_adapter.h"

#include "host/console_host.h"
#include "host/result_list_model.h"

namespace quenvolta
{

HRESULT ResultDataAdapter::InsertItem(RESULTDATAITEM* item)
{
    return m_list.Insert(item);
}

HRESULT ResultDataAdapter::DeleteItem(HRESULTITEM item)
{
    return m_list.Remove(item);
}

HRESULT ResultDataAdapter::DeleteAllRsltItems()
{
    m_list.Clear();
    return S_OK;
}

HRESULT ResultDataAdapter::SetDescBarText(const QString& text)
{
    Q_EMIT m_host.DescriptionChanged(text);
    return S_OK;
}

} // namespace quenvolta
