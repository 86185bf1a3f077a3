#pragma once

#include "accounts/security_page_host.h"

namespace quenvolta
{

class CModel;

/// The permissions of the model's server.
class CModelSecurityPageHost : public IcSecurityPageHost
{
public:
    /// The model must outlive the host.
    CModelSecurityPageHost(CModel& model, TreePosition path);

    QString GetServerComputerName() override;
    bool IsWindowsAuthentication() override;
    TreePosition GetPath() override { return m_path; }
    PermissionList GetPermissions(const TreePosition& path) override;
    void SetPermissions(const PermissionList& entries) override;
    std::unique_ptr<CAddPermissionDlg> CreateAccountChooser(QWidget* parent) override;
    std::unique_ptr<CUserGroupPickerDlg> CreateWindowsPicker(QWidget* parent) override;
    QStringList GetWindowsAccountNames(const QStringList& sids) override;

private:
    CModel& m_model;
    TreePosition m_path;
};

} // namespace quenvolta
