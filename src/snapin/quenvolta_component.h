#pragma once

namespace quenvolta
{

class IBaseNode;
class IConsole;
class IToolbar;

/// What a node asks of the snap-in's object of a view.
class IQuenvoltaComponent
{
public:
    virtual ~IQuenvoltaComponent() = default;
    /// The toolbar of a resource number; null until it was shown once.
    virtual IToolbar* GetToolbar(int resource) = 0;
    /// Has the page of the view show the node's status.
    virtual void RenderPage(IBaseNode& node) = 0;
    virtual IConsole* GetConsole() const = 0;
};

} // namespace quenvolta
