#include "provider/classes/security_descriptor_class.h"

#include "provider/classes/permission_objects.h"

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

SecurityDescriptorClass::SecurityDescriptorClass(std::shared_ptr<RepositorySecurityMethods> security)
    : m_security(std::move(security))
{
    Handle(u"SetSecurity"_s, Effect::Changes, [this](MethodCall& call) { SetSecurity(call); });
}

std::optional<InstanceRow> SecurityDescriptorClass::Get(const ClassDefinitionPtr& definition, const Keys& keys,
                                                        CallContext& context)
{
    const QString object = keys.value(u"AssociatedObject"_s);
    const PermissionList permissions = m_security->Permissions(PermissionObjects::PlaceFromPath(object));
    if (permissions.isEmpty())
        return std::nullopt;
    const PermissionObjects objects(context.classes);
    QList<WbemObjectPtr> entries;
    for (const Permission& permission : permissions)
        entries.append(objects.ToRow(permission).ToObject());
    return InstanceRow(definition).Set(u"AssociatedObject", object).Set(u"Permissions", entries);
}

void SecurityDescriptorClass::SetSecurity(MethodCall& call)
{
    const SecuredPlace place = PermissionObjects::PlaceFromPath(call.String(u"Object"));
    const QList<WbemObjectPtr> objects = call.ObjectArray(u"Permissions");
    m_security->SetPermissions(place, PermissionObjects::FromObjects(objects, place), call.Context().cancel);
}

} // namespace quenvolta
