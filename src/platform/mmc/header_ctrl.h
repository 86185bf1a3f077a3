#pragma once

#include "platform/hresult.h"

#include <QString>

namespace quenvolta
{

/// The columns of the result list. The console removes them before another item is shown.
class IHeaderCtrl
{
public:
    virtual ~IHeaderCtrl() = default;
    /// `width` is in units of a screen of 96 dots an inch; a width that the person chose before wins over it.
    virtual HRESULT InsertColumn(int column, const QString& title, int width) = 0;
};

} // namespace quenvolta
