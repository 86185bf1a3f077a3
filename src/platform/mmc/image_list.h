#pragma once

#include "platform/hresult.h"

namespace quenvolta
{

/// The images that items name by their index.
class IImageList
{
public:
    virtual ~IImageList() = default;
    /// Puts the icon resource of the number at the index.
    virtual HRESULT ImageListSetIcon(int iconResource, int index) = 0;
};

} // namespace quenvolta
