#include "host/printed_messages.h"

#include <cstdio>

namespace quenvolta
{

void PrintedMessages::ShowError(const Exception& exception)
{
    ShowText({MessageIcon::Error, MessageButtons::Ok}, exception.GetMessage());
}

MessageAnswer PrintedMessages::ShowText(MessageStyle style, const QString& text)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
    return style.buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
}

int PrintedMessages::Ask(const TaskQuestion& question)
{
    ShowText({question.icon, MessageButtons::Ok}, question.content);
    return 0;
}

MessageAnswer PrintedMessages::AskExplained(const ExplainedQuestion& question)
{
    return ShowText({MessageIcon::Question, MessageButtons::YesNo}, question.instruction);
}

} // namespace quenvolta
