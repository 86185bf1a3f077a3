#include "repositories/create_folder_dlg.h"

#include "repositories/folder_executors.h"
#include "ui_create_folder_dlg.h"

namespace quenvolta
{

CCreateFolderDlg::CCreateFolderDlg(QWidget* parent, CModel& model, const TreePosition& target)
    : CCreateFolderDlgImpl(parent, std::make_unique<CCreateFolderExecutor>(model, target))
{
    Ui::CreateFolderDlg form;
    SetUp(form);
}

} // namespace quenvolta
