#include "repositories/repository_wizard/permissions_host.h"

#include "repositories/repository_wizard/repository_wizard_interface.h"

namespace quenvolta::RepositoryWizard
{

using namespace Qt::StringLiterals;

CPermissionsHost::CPermissionsHost(IcRepositoryWizard& wizard)
    : CModelSecurityPageHost(wizard.GetModel(), {})
    , m_wizard(wizard)
{
}

bool CPermissionsHost::IsWindowsAuthentication()
{
    return m_wizard.IsWindowsAuthentication();
}

TreePosition CPermissionsHost::GetPath()
{
    return {m_wizard.GetRepositoryName(), u"/"_s};
}

PermissionList CPermissionsHost::GetPermissions(const TreePosition& path)
{
    return path == GetPath() ? m_kept : CModelSecurityPageHost::GetPermissions(path);
}

} // namespace quenvolta::RepositoryWizard
