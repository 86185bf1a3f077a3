#pragma once

#include <QString>
#include <QStringList>

#include <ostream>

// Lets a failed expectation show texts. They live in the namespace of Qt's types, where the test library looks.

inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* stream)
{
    *stream << '[' << texts.join(QStringLiteral(", ")).toStdString() << ']';
}
