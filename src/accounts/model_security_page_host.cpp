#include "accounts/model_security_page_host.h"

#include "accounts/add_permission_dlg.h"
#include "accounts/user_group_picker_dlg.h"
#include "accounts/windows_account_names.h"
#include "model/computer_directory.h"
#include "model/model.h"

#include <utility>

namespace quenvolta
{

CModelSecurityPageHost::CModelSecurityPageHost(CModel& model, TreePosition path)
    : m_model(model)
    , m_path(std::move(path))
{
}

QString CModelSecurityPageHost::GetServerComputerName()
{
    return m_model.ComputerName();
}

bool CModelSecurityPageHost::IsWindowsAuthentication()
{
    return m_model.GetServerSettings().windowsAuthentication;
}

PermissionList CModelSecurityPageHost::GetPermissions(const TreePosition& path)
{
    return m_model.GetSecurity(path);
}

void CModelSecurityPageHost::SetPermissions(const PermissionList& entries)
{
    m_model.SetSecurity(m_path, entries);
}

std::unique_ptr<CAddPermissionDlg> CModelSecurityPageHost::CreateAccountChooser(QWidget* parent)
{
    return std::make_unique<CAddPermissionDlg>(parent, m_model);
}

std::unique_ptr<CUserGroupPickerDlg> CModelSecurityPageHost::CreateWindowsPicker(QWidget* parent)
{
    return std::make_unique<CUserGroupPickerDlg>(
        parent, [&model = m_model] { return model.OpenComputerDirectory(); }, CUserGroupPickerDlg::Computers::With);
}

QStringList CModelSecurityPageHost::GetWindowsAccountNames(const QStringList& sids)
{
    return WindowsAccountNames(m_model, sids);
}

} // namespace quenvolta
