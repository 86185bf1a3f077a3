#pragma once

#include "accounts/model_security_page_host.h"

namespace quenvolta::RepositoryWizard
{

class IcRepositoryWizard;

/// The permissions of a repository that doesn't exist yet: its own are kept here, those above it are the server's.
class CPermissionsHost final : public CModelSecurityPageHost
{
public:
    explicit CPermissionsHost(IcRepositoryWizard& wizard);

    const PermissionList& Kept() const { return m_kept; }

    bool IsWindowsAuthentication() override;
    TreePosition GetPath() override;
    PermissionList GetPermissions(const TreePosition& path) override;
    void SetPermissions(const PermissionList& entries) override { m_kept = entries; }

private:
    IcRepositoryWizard& m_wizard;
    PermissionList m_kept;
};

} // namespace quenvolta::RepositoryWizard
