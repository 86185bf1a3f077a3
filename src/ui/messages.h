#pragma once

#include "foundation/exception.h"
#include "ui/string_table.h"

#include <QList>
#include <QString>

namespace quenvolta
{

enum class MessageIcon {
    Information,
    Question,
    Warning,
    Error,
};

enum class MessageButtons {
    Ok,
    YesNo, ///< No is the default
};

struct MessageStyle {
    MessageIcon icon = MessageIcon::Information;
    MessageButtons buttons = MessageButtons::Ok;
};

enum class MessageAnswer {
    Ok,
    Yes,
    No,
};

/// A button of a question with choices of its own.
struct TaskButton {
    /// Not 0.
    int id = 0;
    /// With its mnemonic.
    QString text;
    bool isEnabled = true;
};

/// A question with choices of its own, and Cancel.
struct TaskQuestion {
    MessageIcon icon = MessageIcon::Warning;
    /// Plain text.
    QString content;
    QList<TaskButton> buttons;
};

/// A question to be answered with Yes or No, with a page where the administrator can read about it.
struct ExplainedQuestion {
    // Plain texts.
    QString instruction;
    QString content;
    QString helpLabel;
    /// The path of a page of the help-link site.
    QString helpPage;
};

/// How code without a window of its own tells and asks the administrator.
class IcMessages
{
public:
    virtual ~IcMessages() = default;
    virtual void ShowError(const Exception& exception) = 0;
    /// Shows a plain text and waits for the answer; closing the box answers No, or Ok where that is the only button.
    virtual MessageAnswer ShowText(MessageStyle style, const QString& text) = 0;
    /// The number of the chosen button; 0 for Cancel and for closing.
    virtual int Ask(const TaskQuestion& question) = 0;
    /// Closing the box answers No, which is the default.
    virtual MessageAnswer AskExplained(const ExplainedQuestion& question) = 0;

    /// ShowText with a text of the string table.
    template <typename... Inserts>
    MessageAnswer ShowMessage(MessageStyle style, int id, const Inserts&... inserts)
    {
        return ShowText(style, LoadString(id, inserts...));
    }
};

} // namespace quenvolta
