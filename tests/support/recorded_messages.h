#pragma once

#include "ui/messages.h"

#include <QStringList>

namespace quenvolta::test
{

/// Messages that nobody sees: each is kept, questions get the answer that the test set.
class RecordedMessages final : public IcMessages
{
public:
    void ShowError(const Exception& exception) override { errors.append(exception.GetMessage()); }
    MessageAnswer ShowText(MessageStyle style, const QString& text) override
    {
        texts.append(text);
        lastStyle = style;
        return style.buttons == MessageButtons::Ok ? MessageAnswer::Ok : answer;
    }

    int Ask(const TaskQuestion& question) override
    {
        texts.append(question.content);
        lastButtons = question.buttons;
        return chosenButton;
    }

    MessageAnswer AskExplained(const ExplainedQuestion& question) override
    {
        texts.append(question.instruction);
        return answer;
    }

    QStringList errors;
    QStringList texts;
    MessageStyle lastStyle;
    MessageAnswer answer = MessageAnswer::No;
    QList<TaskButton> lastButtons;
    int chosenButton = 0;
};

} // namespace quenvolta::test
