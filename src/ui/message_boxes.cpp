#include "ui/message_boxes.h"

#include "foundation/wmi_client_exception.h"
#include "ui/arrow_cursor.h"
#include "ui/guidance.h"
#include "ui/help_site.h"

#include <QHash>
#include <QMessageBox>
#include <QPushButton>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// Longer texts would make a box that is larger than the screen.
constexpr qsizetype kLongestText = 1500;
constexpr qsizetype kMostLines = 25;

QMessageBox::Icon BoxIcon(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Warning:
        return QMessageBox::Warning;
    case MessageIcon::Error:
        return QMessageBox::Critical;
    case MessageIcon::Information:
        break;
    }
    return QMessageBox::Information;
}

void SetText(QMessageBox& box, const QString& text)
{
    if (text.size() <= kLongestText && text.count(u'\n') < kMostLines) {
        box.setText(text);
        return;
    }
    const QString beginning = text.left(kLongestText).section(u'\n', 0, kMostLines - 1);
    box.setText(beginning + u"\u2026\n\n"_s + LoadString(StringId::kMessageTooLong));
    box.setDetailedText(text);
}

MessageAnswer AskYesOrNo(QMessageBox& box)
{
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

} // namespace

void ShowError(QWidget* parent, const Exception& exception)
{
    const auto* explained = dynamic_cast<const WMIClientException*>(&exception);
    if (explained != nullptr && ShowGuidance(parent, *explained))
        return;
    ShowText(parent, {MessageIcon::Error, MessageButtons::Ok}, exception.GetMessage());
}

MessageAnswer ShowText(QWidget* parent, MessageStyle style, const QString& text)
{
    const ArrowCursor cursor;
    QMessageBox box(parent);
    box.setWindowTitle(LoadString(StringId::kCaption));
    box.setIcon(BoxIcon(style.icon));
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    SetText(box, text);
    if (style.buttons == MessageButtons::Ok) {
        box.setStandardButtons(QMessageBox::Ok);
        box.exec();
        return MessageAnswer::Ok;
    }
    return AskYesOrNo(box);
}

MessageAnswer AskExplained(QWidget* parent, const ExplainedQuestion& question)
{
    const ArrowCursor cursor;
    QMessageBox box(parent);
    box.setWindowTitle(LoadString(StringId::kCaption));
    box.setIcon(QMessageBox::Question);
    box.setTextFormat(Qt::RichText);
    box.setText(u"<b>%1</b>"_s.arg(question.instruction.toHtmlEscaped()));
    box.setInformativeText(question.content.toHtmlEscaped() + u"<br><br>"_s +
                           LinkTo(HelpUrl(question.helpPage), question.helpLabel)); // a message box opens its links
    return AskYesOrNo(box);
}

int AskTask(QWidget* parent, const TaskQuestion& question)
{
    const ArrowCursor cursor;
    QMessageBox box(parent);
    box.setWindowTitle(LoadString(StringId::kCaption));
    box.setIcon(BoxIcon(question.icon));
    box.setTextFormat(Qt::PlainText);
    SetText(box, question.content);
    QHash<QAbstractButton*, int> numbers;
    for (const TaskButton& each : question.buttons) {
        QPushButton* button = box.addButton(each.text, QMessageBox::AcceptRole);
        button->setEnabled(each.isEnabled);
        numbers.insert(button, each.id);
    }
    box.setEscapeButton(box.addButton(QMessageBox::Cancel));
    box.exec();
    return numbers.value(box.clickedButton());
}

} // namespace quenvolta
