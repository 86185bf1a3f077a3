#pragma once

#include "ui/field_focus.h"
#include "ui/guard.h"
#include "ui/message_boxes.h"
#include "ui/wait_cursor.h"

#include <QDialog>

#include <utility>

namespace quenvolta
{

/// The base of dialogs: it keeps at least the size that it opens with, and what fails in it is shown over it.
class CBaseDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CBaseDialog(QWidget* parent);

    int exec() override;

protected:
    void showEvent(QShowEvent* event) override;

    /// Runs a handler that may take a while. False after a failure, which was shown.
    template <typename Body>
    bool Run(Body&& body)
    {
        return Guarded(m_messages, [&] {
            const WaitCursor cursor;
            std::forward<Body>(body)();
        });
    }
    /// Shows an error and returns the focus to the field, whose text is selected.
    template <typename... Inserts>
    void Refuse(QWidget& field, int message, const Inserts&... inserts)
    {
        ShowMessage(this, {MessageIcon::Error, MessageButtons::Ok}, message, inserts...);
        FocusOn(field);
    }
    IcMessages& Messages() { return m_messages; }

private:
    CMessageBoxes m_messages;
};

} // namespace quenvolta
