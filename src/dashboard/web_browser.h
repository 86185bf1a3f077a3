#pragma once

#include <QColor>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

class QWidget;

namespace quenvolta
{

/// What a web browser tells its owner.
class IcWebBrowserEvents
{
public:
    virtual ~IcWebBrowserEvents() = default;
    virtual void OnTitleChange(const QString& title) = 0;
    /// The administrator followed a link that leads out of the page. The page stays.
    virtual void OnLink(const QUrl& address) = 0;
    /// The process that shows the page has ended, and shows nothing any more.
    virtual void OnEnded() = 0;
};

/// A web browser that shows nothing but the program's own pages.
class IWebBrowser
{
public:
    virtual ~IWebBrowser() = default;
    /// Owned by the browser.
    virtual QWidget& Widget() = 0;
    /// What is seen while there is no page.
    virtual void SetBackground(const QColor& color) = 0;
    /// Loads a page of the resources anew.
    virtual void Navigate(int resource) = 0;
    /// Runs a script in the page; `done` gets its text later, or nothing when the page goes first.
    virtual void RunScript(const QString& script, std::function<void(const QString& text)> done) = 0;
};

/// Why there is no browser.
enum class WebBrowserFault {
    None,
    NotInstalled, ///< parts of it are missing
    NoSandbox,    ///< the system doesn't let it work apart from the rest
};

/// The function `CreateWebBrowser` of the browser's module. The events outlive the browser.
using WebBrowserFactory = WebBrowserFault (*)(IcWebBrowserEvents& events, std::unique_ptr<IWebBrowser>* browser);

} // namespace quenvolta
