#pragma once

#include "platform/mmc/result_view.h"

#include <QString>

#include <functional>

namespace quenvolta
{

struct DashboardStatus;

/// The page of the root, as the snap-in sees it.
class IcStatusPage : public IResultView
{
public:
    /// Runs what a link's address stands for. False when it stands for nothing.
    using LinkHandler = std::function<bool(const QString& address)>;

    /// Shows the status at once, or as soon as the page is loaded; also later, in the same page.
    virtual void ShowStatus(const DashboardStatus& status) = 0;
    /// Who hears of the links that the administrator follows; an empty handler for nobody.
    virtual void SetLinkHandler(LinkHandler handler) = 0;
};

} // namespace quenvolta
