#pragma once

#include <QString>

namespace quenvolta
{

/// An edited text, whose lines end in "\n", with the line endings of the text that it was: lines that stand unchanged
/// at the beginning and at the end keep theirs, those between get the one that is the most frequent.
QString WithLineEndingsOf(const QString& original, const QString& edited);

/// Whether the first line names the program that runs the script.
bool HasInterpreterLine(QStringView script);

} // namespace quenvolta
