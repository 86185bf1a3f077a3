#pragma once

#include "model/tree_position.h"
#include "repositories/create_folder_dlg_impl.h"

namespace quenvolta
{

class CModel;

/// "Create Folder".
class CCreateFolderDlg final : public CCreateFolderDlgImpl
{
    Q_OBJECT

public:
    /// The folder is created in the target. The model must outlive the dialog.
    CCreateFolderDlg(QWidget* parent, CModel& model, const TreePosition& target);
};

} // namespace quenvolta
