#pragma once

#include "ui/messages.h"

#include <QPointer>
#include <QString>
#include <QWidget>

namespace quenvolta
{

/// Reports a caught failure in a message box, or with guidance where the server named a probable reason.
void ShowError(QWidget* parent, const Exception& exception);

/// Shows a plain text in a message box.
MessageAnswer ShowText(QWidget* parent, MessageStyle style, const QString& text);

/// Asks a question with choices of its own; the number of the chosen button, 0 for Cancel and for closing.
int AskTask(QWidget* parent, const TaskQuestion& question);

/// Asks a question to be answered with Yes or No.
MessageAnswer AskExplained(QWidget* parent, const ExplainedQuestion& question);

/// Shows a text of the string table, its inserts filled, in a message box.
template <typename... Inserts>
MessageAnswer ShowMessage(QWidget* parent, MessageStyle style, int id, const Inserts&... inserts)
{
    return ShowText(parent, style, LoadString(id, inserts...));
}

/// IcMessages as message boxes of a window.
class CMessageBoxes final : public IcMessages
{
public:
    /// The window that the boxes belong to; it may come later than the boxes, and go earlier.
    void SetParent(QWidget* parent) { m_parent = parent; }

    void ShowError(const Exception& exception) override { quenvolta::ShowError(m_parent, exception); }
    MessageAnswer ShowText(MessageStyle style, const QString& text) override
    {
        return quenvolta::ShowText(m_parent, style, text);
    }
    int Ask(const TaskQuestion& question) override { return AskTask(m_parent, question); }
    MessageAnswer AskExplained(const ExplainedQuestion& question) override
    {
        return quenvolta::AskExplained(m_parent, question);
    }

private:
    QPointer<QWidget> m_parent;
};

} // namespace quenvolta
