#pragma once

#include <QDialog>

#include <memory>

namespace Ui
{
class TaskDialog;
}

namespace quenvolta
{

/// A failure with a main instruction, a content with links, and information that can be unfolded.
class CTaskDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit CTaskDialog(QWidget* parent);
    ~CTaskDialog() override;

    /// A plain text.
    void SetMainInstruction(const QString& text);
    /// A rich text of the program's own.
    void SetContent(const QString& text);
    /// A plain text; an empty one leaves no way to unfold anything.
    void SetExpandedInformation(const QString& text);

    int exec() override;

private:
    void ShowDetails(bool shown);

    std::unique_ptr<Ui::TaskDialog> m_ui;
};

} // namespace quenvolta
