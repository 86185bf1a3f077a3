#pragma once

#include "platform/hresult.h"
#include "platform/mmc/data_object.h"

#include <QString>

#include <cstdint>

namespace quenvolta
{

/// The places of a menu at which a snap-in may insert items.
enum class CCM_INSERTIONPOINTID {
    TOP,
    NEW,
    TASK,
    VIEW,
};

// Which of the places the console offers.
inline constexpr std::uint32_t CCM_INSERTIONALLOWED_TOP = 0x1;
inline constexpr std::uint32_t CCM_INSERTIONALLOWED_NEW = 0x2;
inline constexpr std::uint32_t CCM_INSERTIONALLOWED_TASK = 0x4;
inline constexpr std::uint32_t CCM_INSERTIONALLOWED_VIEW = 0x8;
inline constexpr std::uint32_t CCM_INSERTIONALLOWED_ALL = 0xF;

/// A menu item of a snap-in.
struct CONTEXTMENUITEM {
    /// With its mnemonic.
    QString strName;
    QString strStatusBarText;
    /// The keys that run the command wherever the focus is; empty for none.
    QString strShortcut;
    int lCommandID = 0;
    CCM_INSERTIONPOINTID lInsertionPointID = CCM_INSERTIONPOINTID::TOP;
    bool isGrayed = false;
};

/// Takes the items of a menu.
class IContextMenuCallback
{
public:
    virtual ~IContextMenuCallback() = default;
    virtual HRESULT AddItem(const CONTEXTMENUITEM& item) = 0;
};

/// What a component implements to have commands in the menus of its items.
class IExtendContextMenu
{
public:
    virtual ~IExtendContextMenu() = default;
    /// Adds the items at the places that are allowed.
    virtual HRESULT AddMenuItems(const DataObjectPtr& object, IContextMenuCallback& callback,
                                 std::uint32_t insertionAllowed) = 0;
    virtual HRESULT Command(int command, const DataObjectPtr& object) = 0;
};

} // namespace quenvolta
