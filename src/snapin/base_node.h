#pragma once

namespace quenvolta
{

class IcStatusPage;

/// What the page of the root asks of the node that it shows.
class IBaseNode
{
public:
    virtual ~IBaseNode() = default;
    /// Writes the node's status into the page.
    virtual void RenderStatus(IcStatusPage& /*page*/) {}
};

} // namespace quenvolta
