#include "repositories/repository_name_rule.h"

#include <QList>

#include <algorithm>

namespace quenvolta
{

bool IsValidRepositoryName(QStringView name)
{
    if (name.isEmpty() || name.front() == u'.' || name.back() == u'.')
        return false;
    // Code points, so that letters beyond the basic plane count as letters.
    const QList<uint> characters = name.toUcs4();
    return std::ranges::all_of(
        characters, [](char32_t c) { return c == U'-' || c == U'.' || c == U'_' || QChar::isLetterOrNumber(c); });
}

} // namespace quenvolta
