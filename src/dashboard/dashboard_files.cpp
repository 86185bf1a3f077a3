#include "dashboard/dashboard_files.h"

#include "foundation/simple_exception.h"

#include <QFile>

// Outside of the namespace: the function that this names is not in one.
static void InitDashboardResources()
{
    Q_INIT_RESOURCE(dashboard);
}

namespace quenvolta
{

QString DashboardFile(const QString& name)
{
    InitDashboardResources();
    QFile file(QStringLiteral(":/dashboard/") + name);
    if (!file.open(QIODevice::ReadOnly))
        throw SimpleException(u"The resource '%s' is missing", name);
    return QString::fromUtf8(file.readAll());
}

} // namespace quenvolta
