#pragma once

#include <QString>

namespace quenvolta
{

class IConsole;
class IcStatusPage;

/// What the page of the root asks of the node that it shows.
class IBaseNode
{
public:
    virtual ~IBaseNode() = default;
    /// Runs what a link of the page stands for. False for an address that stands for nothing.
    virtual bool HandleCommandLink(const QString& /*address*/, IConsole& /*console*/) { return false; }
    /// Writes the node's status into the page.
    virtual void RenderStatus(IcStatusPage& /*page*/) {}
};

} // namespace quenvolta
