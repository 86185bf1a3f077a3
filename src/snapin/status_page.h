#pragma once

#include "platform/mmc/result_view.h"

namespace quenvolta
{

struct CStatusSnapshot;

/// The result view that shows the status of the server.
class IcStatusPage : public IResultView
{
public:
    virtual void ShowStatus(const CStatusSnapshot& status) = 0;
};

} // namespace quenvolta
