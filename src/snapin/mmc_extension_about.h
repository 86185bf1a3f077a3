#pragma once

#include "platform/mmc/snapin_about.h"

namespace quenvolta
{

/// What the snap-in says about itself.
class CMMCExtensionAbout final : public ISnapinAbout
{
public:
    HRESULT GetSnapinDescription(QString* description) const override;
    HRESULT GetProvider(QString* provider) const override;
    HRESULT GetSnapinVersion(QString* version) const override;
    HRESULT GetSnapinImage(int* iconResource) const override;
    HRESULT GetStaticFolderImage(StaticFolderImages* images) const override;
};

} // namespace quenvolta
