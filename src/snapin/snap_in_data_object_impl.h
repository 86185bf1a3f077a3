#pragma once

#include "platform/mmc/data_object.h"
#include "snapin/snap_in_item.h"

#include <memory>

namespace quenvolta
{

/// The data object of an item of this snap-in.
class CSnapInDataObjectImpl final : public IDataObject
{
public:
    CSnapInDataObjectImpl(std::shared_ptr<CSnapInItem> item, DATA_OBJECT_TYPES type)
        : m_item(std::move(item))
        , m_type(type)
    {
    }

    HRESULT GetData(const QString& format, QByteArray* data) const override { return m_item->FillData(format, data); }

    const std::shared_ptr<CSnapInItem>& SharedItem() const { return m_item; }
    DATA_OBJECT_TYPES Type() const { return m_type; }

private:
    std::shared_ptr<CSnapInItem> m_item;
    DATA_OBJECT_TYPES m_type;
};

} // namespace quenvolta
