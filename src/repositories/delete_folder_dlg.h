#pragma once

#include "model/tree_position.h"
#include "ui/expandable_dialog.h"

#include <memory>

namespace Ui
{
class DeleteFolderDlg;
}

namespace quenvolta
{

class CModel;

/// "Delete Folder": asks, with the commit message at hand, and deletes.
class CDeleteFolderDlg final : public CExpandableDialog
{
    Q_OBJECT

public:
    /// The model must outlive the dialog.
    CDeleteFolderDlg(QWidget* parent, CModel& model, const TreePosition& folder);
    ~CDeleteFolderDlg() override;

    void accept() override;

private:
    CModel& m_model;
    TreePosition m_folder;
    std::unique_ptr<Ui::DeleteFolderDlg> m_ui;
};

} // namespace quenvolta
