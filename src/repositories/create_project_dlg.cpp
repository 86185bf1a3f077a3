#include "repositories/create_project_dlg.h"

#include "repositories/folder_executors.h"
#include "ui_create_project_dlg.h"

namespace quenvolta
{

CCreateProjectDlg::CCreateProjectDlg(QWidget* parent, CModel& model, const TreePosition& target)
    : CCreateFolderDlgImpl(parent, std::make_unique<CCreateProjectExecutor>(model, target))
{
    Ui::CreateProjectDlg form;
    SetUp(form);
}

} // namespace quenvolta
