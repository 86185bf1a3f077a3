#pragma once

#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineUrlSchemeHandler>

namespace quenvolta
{

/// Answers "res://dashboard/NAME" with the program's resource ":/dashboard/NAME".
class ResourceHandler final : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;
    void requestStarted(QWebEngineUrlRequestJob* job) override;
};

/// Lets a page load nothing but resources.
class ResourcesOnly final : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;
    void interceptRequest(QWebEngineUrlRequestInfo& request) override;
};

} // namespace quenvolta
