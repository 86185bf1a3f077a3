#pragma once

#include <QDialog>

#include <memory>

namespace Ui
{
class SelectComputerDlg;
}

namespace quenvolta
{

class CModel;
class IcMessages;
class IcPreferences;
class IcShell;

/// Chooses the computer that the model manages.
class CSelectComputerDlg final : public QDialog
{
    Q_OBJECT

public:
    CSelectComputerDlg(CModel& model, const IcPreferences& preferences, const IcShell& shell, IcMessages& messages,
                       QWidget* parent);
    ~CSelectComputerDlg() override;

    void accept() override;

private:
    QString ComputerName() const;
    void UpdateControls();
    void Browse();

    CModel& m_model;
    IcMessages& m_messages;
    std::unique_ptr<Ui::SelectComputerDlg> m_ui;
};

} // namespace quenvolta
