#pragma once

namespace quenvolta
{

/// What the result pane shows in place of the list. A snap-in asks it for the interface that it knows.
class IResultView
{
public:
    virtual ~IResultView() = default;
};

} // namespace quenvolta
