#pragma once

#include "platform/mmc/image_list.h"

#include <QHash>
#include <QIcon>

namespace quenvolta
{

/// The console's image list.
class ImageListAdapter final : public IImageList
{
public:
    HRESULT ImageListSetIcon(int iconResource, int index) override;
    /// An empty icon for an index that wasn't set.
    QIcon Icon(int index) const { return m_icons.value(index); }

private:
    QHash<int, QIcon> m_icons;
};

} // namespace quenvolta
