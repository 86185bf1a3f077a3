#pragma once

#include "ui/askpass_prompt.h"

#include <QDialog>

#include <memory>

namespace Ui
{
class AskpassDlg;
}

namespace quenvolta
{

/// Asks a person what ssh wants to know.
class CAskpassDlg final : public QDialog
{
    Q_OBJECT

public:
    explicit CAskpassDlg(const AskpassPrompt& prompt, QWidget* parent = nullptr);
    ~CAskpassDlg() override;

    /// What ssh is to be told once the dialog ended with OK.
    QString Answer() const;

private:
    AskpassPrompt::Kind m_kind;
    std::unique_ptr<Ui::AskpassDlg> m_ui;
};

} // namespace quenvolta
