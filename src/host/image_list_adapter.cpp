#include "host/image_list_adapter.h"

#include "ui/icons.h"

namespace quenvolta
{

HRESULT ImageListAdapter::ImageListSetIcon(int iconResource, int index)
{
    const QIcon icon = IconResource(iconResource);
    if (icon.isNull())
        return E_INVALIDARG;
    m_icons.insert(index, icon);
    return S_OK;
}

} // namespace quenvolta
