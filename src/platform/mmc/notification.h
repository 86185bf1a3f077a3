#pragma once

#include "platform/mmc/mmc_types.h"

#include <QString>

namespace quenvolta
{

class IImageList;

/// What the console tells a snap-in.
enum class MMC_NOTIFY_TYPE {
    MMCN_ADD_IMAGES, ///< `imageList` wants the images of the result pane
    MMCN_BTN_CLICK,  ///< `command`: the pressed button of the toolbar
    MMCN_COLUMNS_CHANGED,
    MMCN_CONTEXTHELP,
    MMCN_DBLCLICK,
    MMCN_DELETE,
    MMCN_EXPAND,  ///< `on`: expanding; `scopeItem`: the item that is expanded
    MMCN_PRELOAD, ///< `scopeItem`: the static root, before anything of it is shown
    MMCN_REFRESH,
    MMCN_RENAME, ///< `text`: the new name; S_FALSE refuses it
    MMCN_SELECT, ///< `on`: selected
    MMCN_SHOW,   ///< `on`: the result pane begins to show the item
    MMCN_SNAPINHELP,
    MMCN_VIEW_CHANGE,
};

/// A notification and what comes with it.
struct MMCNotification {
    MMC_NOTIFY_TYPE type;
    bool on = false;
    HSCOPEITEM scopeItem = 0;
    QString text = {};
    IImageList* imageList = nullptr;
    int command = 0;
};

} // namespace quenvolta
