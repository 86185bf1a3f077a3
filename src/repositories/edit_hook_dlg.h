#pragma once

#include "ui/base_dialog.h"

#include <memory>

namespace Ui
{
class EditHookDlg;
}

namespace quenvolta
{

struct HookDescription;

/// "Edit Hook": the script of one hook, below what Subversion passes to it.
class CEditHookDlg final : public CBaseDialog
{
    Q_OBJECT

public:
    /// Whether a script needs a line that names its interpreter; one without is asked about before it is taken.
    enum class Interpreter : bool { Unneeded, Needed };

    CEditHookDlg(QWidget* parent, const HookDescription& hook, const QString& text, Interpreter interpreter);
    ~CEditHookDlg() override;

    /// With the line endings that the text had.
    QString Text() const;

    void accept() override;

private:
    bool IsInterpreterMissed();

    QString m_original;
    Interpreter m_interpreter;
    std::unique_ptr<Ui::EditHookDlg> m_ui;
};

} // namespace quenvolta
