#pragma once

#include "model/tree_position.h"
#include "repositories/create_folder_dlg_impl.h"

namespace quenvolta
{

class CModel;

/// "Create Project Structure".
class CCreateProjectDlg final : public CCreateFolderDlgImpl
{
    Q_OBJECT

public:
    /// The project is created in the target. The model must outlive the dialog.
    CCreateProjectDlg(QWidget* parent, CModel& model, const TreePosition& target);
};

} // namespace quenvolta
