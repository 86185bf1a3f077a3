#include "browser/browser_environment.h"

#include <QFileInfo>
#include <QLibraryInfo>
#include <QLoggingCategory>
#include <QQuickWindow>
#include <QWebEngineUrlScheme>

#include <cstring>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

bool IsInstalled()
{
    const QString process = qEnvironmentVariable(
        "QTWEBENGINEPROCESS_PATH", QLibraryInfo::path(QLibraryInfo::LibraryExecutablesPath) + "/QtWebEngineProcess"_L1);
    const QString resources = qEnvironmentVariable("QTWEBENGINE_RESOURCES_PATH",
                                                   QLibraryInfo::path(QLibraryInfo::DataPath) + "/resources"_L1);
    return QFileInfo(process).isExecutable() && QFileInfo::exists(resources + "/qtwebengine_resources.pak"_L1);
}

/// The engine's sandbox stands on user namespaces. Only a try tells whether the system allows them.
bool HasUserNamespaces()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(unshare(CLONE_NEWUSER) == 0 ? 0 : 1);
    int status = 1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

void AddFlag(const QByteArray& flag)
{
    constexpr const char* kName = "QTWEBENGINE_CHROMIUM_FLAGS";
    const QByteArray flags = qgetenv(kName);
    qputenv(kName, flags.isEmpty() ? flag : flags + ' ' + flag);
}

QLoggingCategory::CategoryFilter s_filterBefore = nullptr;

/// The engine describes its graphics on every start without a graphics card, which is how it is wanted here.
void FilterLog(QLoggingCategory* category)
{
    if (s_filterBefore != nullptr) // null while the filter is being installed: the categories were filtered before
        s_filterBefore(category);
    if (std::strcmp(category->categoryName(), "qt.webenginecontext") == 0)
        category->setEnabled(QtInfoMsg, false);
}

WebBrowserFault Prepare()
{
    if (!IsInstalled())
        return WebBrowserFault::NotInstalled;
    if (geteuid() == 0)
        AddFlag("--no-sandbox"); // the engine refuses to work for root with it: root may do everything all the same
    else if (!HasUserNamespaces())
        return WebBrowserFault::NoSandbox;
    s_filterBefore = QLoggingCategory::installFilter(&FilterLog);
    // Painted without a graphics card: a page that stands still gains nothing from one, and remote and virtual displays
    // have none.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QWebEngineUrlScheme scheme("res");
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::LocalScheme |
                    QWebEngineUrlScheme::LocalAccessAllowed);
    QWebEngineUrlScheme::registerScheme(scheme);
    return WebBrowserFault::None;
}

} // namespace

WebBrowserFault PrepareWebEngine()
{
    static const WebBrowserFault fault = Prepare();
    return fault;
}

} // namespace quenvolta
