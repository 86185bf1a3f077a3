#pragma once

#include "ui/base_dialog.h"

#include <memory>

namespace Ui
{
class CreateUserDlg;
}

namespace quenvolta
{

class CModel;
class PasswordFields;

/// "Create New User".
class CCreateUserDlg final : public CBaseDialog
{
    Q_OBJECT

public:
    CCreateUserDlg(QWidget* parent, CModel& model);
    ~CCreateUserDlg() override;

    /// Without blanks at its ends; the created user's after OK.
    QString UserName() const;

    void accept() override;

private:
    void CreateUser();

    CModel& m_model;
    std::unique_ptr<Ui::CreateUserDlg> m_ui;
    PasswordFields* m_passwords;
};

} // namespace quenvolta
