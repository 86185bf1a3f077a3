#include "snapin/mmc_extension_about.h"

#include "snapin/node_images.h"
#include "ui/string_table.h"

namespace quenvolta
{

HRESULT CMMCExtensionAbout::GetSnapinDescription(QString* description) const
{
    *description = LoadString(StringId::kSnapInDescription);
    return S_OK;
}

HRESULT CMMCExtensionAbout::GetProvider(QString* provider) const
{
    *provider = LoadString(StringId::kProviderName);
    return S_OK;
}

HRESULT CMMCExtensionAbout::GetSnapinVersion(QString* version) const
{
    *version = QStringLiteral(QUENVOLTA_VERSION);
    return S_OK;
}

HRESULT CMMCExtensionAbout::GetSnapinImage(int* iconResource) const
{
    *iconResource = kImageResources[kImageRoot];
    return S_OK;
}

HRESULT CMMCExtensionAbout::GetStaticFolderImage(StaticFolderImages* images) const
{
    *images = {.small = 101, .smallOpen = 101, .large = 102, .transparentColor = 0x008080};
    return S_OK;
}

} // namespace quenvolta
