#pragma once

#include "ui/base_dialog.h"

#include <memory>

namespace Ui
{
class SetPasswordDlg;
}

namespace quenvolta
{

class CModel;
class PasswordFields;

/// "Set Password for '%1'".
class CSetPasswordDlg final : public CBaseDialog
{
    Q_OBJECT

public:
    CSetPasswordDlg(QWidget* parent, CModel& model, const QString& userName);
    ~CSetPasswordDlg() override;

    void accept() override;

private:
    CModel& m_model;
    QString m_userName;
    std::unique_ptr<Ui::SetPasswordDlg> m_ui;
    PasswordFields* m_passwords;
};

} // namespace quenvolta
