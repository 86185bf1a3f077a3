#pragma once

#include "platform/hresult.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace quenvolta
{

/// What the console holds in place of an item of a snap-in.
class IDataObject
{
public:
    virtual ~IDataObject() = default;
    /// The data of a registered clipboard format; DV_E_FORMATETC for one that the object doesn't offer.
    virtual HRESULT GetData(const QString& format, QByteArray* data) const = 0;
};
/// A null pointer stands for the console's special objects: the snap-in's root.
using DataObjectPtr = std::shared_ptr<IDataObject>;

} // namespace quenvolta
