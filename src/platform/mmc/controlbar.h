#pragma once

#include "platform/hresult.h"
#include "platform/mmc/button_state.h"
#include "platform/mmc/data_object.h"
#include "platform/mmc/notification.h"

#include <QString>

namespace quenvolta
{

/// A button of a toolbar.
struct MMCBUTTON {
    int idCommand = 0;
    /// The name of the icon ("start").
    QString icon;
    QString buttonText;
    QString tooltipText;
};

/// A toolbar of a snap-in. E_INVALIDARG for a command that has no button in it.
class IToolbar
{
public:
    virtual ~IToolbar() = default;
    virtual HRESULT AddButton(const MMCBUTTON& button) = 0;
    virtual HRESULT SetButtonState(int command, MMC_BUTTON_STATE buttonState, bool state) = 0;
};

/// Where the toolbars of the selected item stand. A toolbar lives as long as the control bar.
class IControlbar
{
public:
    virtual ~IControlbar() = default;
    virtual HRESULT Create(const QString& title, IToolbar** toolbar) = 0;
    virtual HRESULT Attach(IToolbar& toolbar) = 0;
    virtual HRESULT Detach(IToolbar& toolbar) = 0;
};

/// What a component implements to have toolbars.
class IExtendControlbar
{
public:
    virtual ~IExtendControlbar() = default;
    /// Null: the control bar goes.
    virtual HRESULT SetControlbar(IControlbar* controlbar) = 0;
    /// MMCN_SELECT: the object is, or is no longer, the selected one. MMCN_BTN_CLICK: one of its buttons was pressed.
    virtual HRESULT ControlbarNotify(const DataObjectPtr& object, const MMCNotification& notification) = 0;
};

} // namespace quenvolta
