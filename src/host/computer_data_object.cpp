#include "host/computer_data_object.h"

#include "platform/mmc/clipboard_format.h"
#include "snapin/extension_items.h"

namespace quenvolta
{

HRESULT ComputerDataObject::GetData(const QString& format, QByteArray* data) const
{
    const QUuid& type = CCompManagerExtensionItem::kNodeType.id;
    if (format == CCF_NODETYPE)
        *data = ClipboardGuid(type);
    else if (format == CCF_SZNODETYPE)
        *data = ClipboardText(type.toString(QUuid::WithBraces).toUpper());
    else if (format == CCF_DISPLAY_NAME)
        *data = ClipboardText(m_displayName);
    else if (format == MMC_SNAPIN_MACHINE_NAME)
        *data = ClipboardText(m_computer);
    else
        return DV_E_FORMATETC;
    return S_OK;
}

} // namespace quenvolta
