#include "model/class_caches.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

ClassCaches::ClassCaches(WMIConnection& connection)
    : user(u"Quenvolta_User"_s, connection)
    , group(u"Quenvolta_Group"_s, connection)
    , everyone(u"Quenvolta_Everyone"_s, connection)
    , windowsAccount(u"Quenvolta_WindowsAccount"_s, connection)
    , permissionEntry(u"Quenvolta_PermissionEntry"_s, connection)
    , repositoryEntry(u"Quenvolta_RepositoryEntry"_s, connection)
    , repository(u"Quenvolta_Repository"_s, connection)
    , service(u"Quenvolta_Service"_s, connection)
    , qdfsService(u"Quenvolta_QdfsService"_s, connection)
    , securityDescriptor(u"Quenvolta_SecurityDescriptor"_s, connection)
    , activity(u"Quenvolta_Activity"_s, connection)
{
}

} // namespace quenvolta
