#pragma once

#include "platform/hresult.h"
#include "platform/mmc/data_object.h"
#include "platform/mmc/mmc_types.h"

#include <QString>

class QWidget;

namespace quenvolta
{

class IConsoleNameSpace;
class IConsoleVerb;
class IHeaderCtrl;
class IResultData;
class IResultView;

/// The console as a snap-in sees it. What it hands out lives as long as the console.
class IConsole
{
public:
    virtual ~IConsole() = default;
    virtual IConsoleNameSpace& NameSpace() = 0;
    virtual IResultData& ResultData() = 0;
    virtual IHeaderCtrl& Header() = 0;
    virtual HRESULT QueryConsoleVerb(IConsoleVerb** verb) = 0;
    /// What the result pane shows now; E_FAIL when that is the list.
    virtual HRESULT QueryResultView(IResultView** view) = 0;
    /// Selects an item of the scope tree; selecting the selected one shows it anew.
    virtual HRESULT SelectScopeItem(HSCOPEITEM item) = 0;
    /// The text of the status bar, shown at once.
    virtual HRESULT SetStatusText(const QString& text) = 0;
    /// Sends every view MMCN_VIEW_CHANGE for the object.
    virtual HRESULT UpdateAllViews(const DataObjectPtr& object) = 0;
    /// The window over which dialogs open; null without one.
    virtual QWidget* GetMainWindow() = 0;
};

} // namespace quenvolta
