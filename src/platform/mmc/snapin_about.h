#pragma once

#include "platform/hresult.h"

#include <QString>

namespace quenvolta
{

/// What a snap-in says about itself.
class ISnapinAbout
{
public:
    virtual ~ISnapinAbout() = default;
    virtual HRESULT GetSnapinDescription(QString* description) const = 0;
    virtual HRESULT GetProvider(QString* provider) const = 0;
    virtual HRESULT GetSnapinVersion(QString* version) const = 0;
    /// The number of the icon resource.
    virtual HRESULT GetSnapinImage(int* iconResource) const = 0;
};

} // namespace quenvolta
