#pragma once

#include "ui/messages.h"

namespace quenvolta
{

/// IcMessages where nobody looks at a window: texts go to the error output, and questions are answered No.
class PrintedMessages final : public IcMessages
{
public:
    void ShowError(const Exception& exception) override;
    MessageAnswer ShowText(MessageStyle style, const QString& text) override;
    int Ask(const TaskQuestion& question) override;
    MessageAnswer AskExplained(const ExplainedQuestion& question) override;
};

} // namespace quenvolta
