#include "accounts/create_user_dlg.h"
#include "accounts/group_dlg.h"
#include "accounts/set_password_dlg.h"
#include "repositories/consistency_check.h"
#include "repositories/create_folder_dlg.h"
#include "repositories/create_project_dlg.h"
#include "repositories/delete_folder_dlg.h"
#include "repositories/repository_wizard/repository_wizard.h"
#include "snapin/dialogs.h"
#include "snapin/permission_sheets.h"
#include "snapin/run_services.h"
#include "snapin/select_computer_dlg.h"

namespace quenvolta
{

namespace
{

bool Run(QDialog&& dialog)
{
    return dialog.exec() == QDialog::Accepted;
}

/// A line for each dialog that there is.
DialogTable MakeTable()
{
    using Kind = DialogKind;
    using Request = DialogRequest;
    DialogTable table;
    table.Add(Kind::SelectComputer, [](const Request& r) {
        return Run(CSelectComputerDlg(r.model, r.preferences, r.shell, r.messages, r.parent));
    });
    table.Add(Kind::ServiceState, [](const Request& r) { return RunServices(r.model, r.operations); });
    table.Add(Kind::CreateUser, [](const Request& r) { return Run(CCreateUserDlg(r.parent, r.model)); });
    table.Add(Kind::SetPassword, [](const Request& r) { return Run(CSetPasswordDlg(r.parent, r.model, r.account)); });
    table.Add(Kind::CreateGroup, [](const Request& r) { return Run(CGroupDlg(r.parent, r.model)); });
    table.Add(Kind::EditGroup, [](const Request& r) { return Run(CGroupDlg(r.parent, r.model, r.account)); });
    table.Add(Kind::GlobalPermissions, &ShowGlobalPermissions);
    table.Add(Kind::RepositoryProperties, &ShowRepositoryProperties);
    table.Add(Kind::RepositoryHooks, &ShowRepositoryProperties);
    table.Add(Kind::CreateRepository, [](const Request& r) {
        return Run(RepositoryWizard::CRepositoryWizard(r.parent, r.model, r.preferences));
    });
    table.Add(Kind::CreateFolder,
              [](const Request& r) { return Run(CCreateFolderDlg(r.parent, r.model, r.position)); });
    table.Add(Kind::CreateProjectStructure,
              [](const Request& r) { return Run(CCreateProjectDlg(r.parent, r.model, r.position)); });
    table.Add(Kind::DeleteFolder,
              [](const Request& r) { return Run(CDeleteFolderDlg(r.parent, r.model, r.position)); });
    table.Add(Kind::ConsistencyCheck, [](const Request& r) {
        CheckConsistency(r.parent, r.model, r.messages, r.position.repositoryName);
        return true;
    });
    return table;
}

} // namespace

const DialogTable& DialogTable::BuiltIn()
{
    static const DialogTable table = MakeTable();
    return table;
}

} // namespace quenvolta
