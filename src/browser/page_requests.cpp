#include "browser/page_requests.h"

#include <QFile>
#include <QFileInfo>
#include <QWebEngineUrlRequestInfo>
#include <QWebEngineUrlRequestJob>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

QByteArray ContentTypeOf(const QString& name)
{
    const QString suffix = QFileInfo(name).suffix();
    if (suffix == "css"_L1)
        return "text/css";
    if (suffix == "js"_L1)
        return "text/javascript";
    return suffix == "svg"_L1 ? "image/svg+xml" : "text/html";
}

} // namespace

void ResourceHandler::requestStarted(QWebEngineUrlRequestJob* job)
{
    const QString name = job->requestUrl().fileName();
    auto* file = new QFile(u":/dashboard/"_s + name, job);
    if (name.isEmpty() || !file->open(QIODevice::ReadOnly))
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    else
        job->reply(ContentTypeOf(name), file);
}

void ResourcesOnly::interceptRequest(QWebEngineUrlRequestInfo& request)
{
    // The page itself decides what it leads to.
    if (request.resourceType() != QWebEngineUrlRequestInfo::ResourceTypeMainFrame)
        request.block(request.requestUrl().scheme() != "res"_L1);
}

} // namespace quenvolta
