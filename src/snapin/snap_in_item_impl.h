#pragma once

#include "platform/mmc/clipboard_format.h"
#include "snapin/node_type.h"
#include "snapin/snap_in_data_object_impl.h"
#include "snapin/snap_in_item.h"

namespace quenvolta
{

/// `text` as a clipboard format holds it: UTF-16 with a zero behind it.
QByteArray ClipboardText(const QString& text);
/// The identifier's 16 bytes, its first three fields little-endian.
QByteArray ClipboardGuid(const QUuid& id);

/// What an item is by its kind: T::kNodeType.
template <typename T>
class CSnapInItemImpl : public CSnapInItem
{
public:
    HRESULT FillData(const QString& format, QByteArray* data) const override
    {
        if (format == CCF_NODETYPE)
            *data = ClipboardGuid(T::kNodeType.id);
        else if (format == CCF_SZNODETYPE)
            *data = ClipboardText(T::kNodeType.id.toString(QUuid::WithBraces).toUpper());
        else if (format == CCF_DISPLAY_NAME)
            *data = ClipboardText(DisplayName());
        else if (format == CCF_SNAPIN_CLASSID)
            *data = ClipboardGuid(kStandaloneClassId);
        else if (format == CCF_SNAPIN_PRELOADS)
            *data = QByteArray(WantsPreload() ? "\1\0\0\0" : "\0\0\0\0", 4);
        else if (format == CCF_GETOBJECTDATA)
            *data = QByteArray("\1\0\0\0", 4);
        else
            return DV_E_FORMATETC;
        return S_OK;
    }

    DataObjectPtr GetDataObject(DATA_OBJECT_TYPES type) override
    {
        return std::make_shared<CSnapInDataObjectImpl>(shared_from_this(), type);
    }

protected:
    virtual QString DisplayName() const = 0;
    virtual bool WantsPreload() const { return false; }
};

} // namespace quenvolta
