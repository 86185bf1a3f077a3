#include "foundation/version.h"

#include "foundation/simple_exception.h"

#include <QStringView>

#include <array>
#include <cstddef>
#include <limits>

namespace quenvolta
{

namespace
{

constexpr int kGroups = 4;

// The number that a text begins with, 0 for none; a number that is too large becomes the largest.
std::int32_t LeadingNumber(QStringView text)
{
    text = text.trimmed();
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.sliced(1);
    std::int64_t number = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            break;
        number = qMin<std::int64_t>(number * 10 + (c.unicode() - u'0'), std::numeric_limits<std::int32_t>::max());
    }
    return static_cast<std::int32_t>(negative ? -number : number);
}

} // namespace

Version ParseVersion(const QString& text)
{
    std::array<std::int32_t, kGroups> components{};
    std::size_t count = 0;
    for (const QStringView token : QStringView(text).tokenize(u'.', Qt::SkipEmptyParts)) {
        if (count == components.size())
            throw SimpleException(u"Cannot parse version string '%s'. Number of groups exceeds %d.", text, kGroups);
        components[count++] = LeadingNumber(token);
    }
    return {components[0], components[1], components[2], components[3]};
}

} // namespace quenvolta
