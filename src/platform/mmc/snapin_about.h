#pragma once

#include "platform/hresult.h"

#include <QString>

#include <cstdint>

namespace quenvolta
{

/// The images of a snap-in's static node: numbers of bitmap resources, and the colour
/// (0x00RRGGBB) that stands for nothing.
struct StaticFolderImages {
    int small = 0;
    int smallOpen = 0;
    int large = 0;
    std::uint32_t transparentColor = 0;
};

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
    virtual HRESULT GetStaticFolderImage(StaticFolderImages* images) const = 0;
};

} // namespace quenvolta
