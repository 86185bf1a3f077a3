#pragma once

#include "support/dialog_test.h"

#include <QPlainTextEdit>

namespace quenvolta::test
{

/// A server with the repository "r" in which there is a folder.
class RepositoriesTest : public DialogTest
{
protected:
    RepositoriesTest()
    {
        server.data.repositories = {{.name = u"r"_s, .entries = {{u"/apps"_s, true}, {u"/apps/old"_s, true}}}};
    }

    static QPushButton& ButtonOf(QWidget& window, const QString& text)
    {
        for (QPushButton* button : window.findChildren<QPushButton*>()) {
            if (button->text() == text)
                return *button;
        }
        throw std::runtime_error(text.toStdString());
    }
    static QString Message(QWidget& dialog) { return Part<QPlainTextEdit>(dialog, "message").toPlainText(); }
    /// What was given to the calls of a method.
    QStringList Given(const QString& method, const QString& parameter) const
    {
        QStringList values;
        for (const RecordedCall& call : server.CallsOf(method)) {
            const Variant value = call.in.value(parameter);
            if (const auto* texts = std::get_if<QStringList>(&value))
                values.append(texts->join(u'|'));
            else if (const auto* text = std::get_if<QString>(&value))
                values.append(*text);
            else if (const auto* number = std::get_if<std::int32_t>(&value))
                values.append(QString::number(*number));
        }
        return values;
    }
};

} // namespace quenvolta::test
