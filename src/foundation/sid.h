#pragma once

#include <QList>
#include <QString>

#include <cstdint>

namespace quenvolta
{

/// A security identifier of revision 1.
struct Sid {
    /// 48 bits.
    std::uint64_t authority = 0;
    /// 1 to 15 numbers.
    QList<std::uint32_t> subAuthorities;

    bool operator==(const Sid&) const = default;
};

/// The standard text, S-1-22-1-1000. Win32Exception for numbers outside the bounds.
QString SidToString(const Sid& sid);

/// Reads the standard text; Win32Exception when it is none.
Sid StringToSid(const QString& text);

} // namespace quenvolta
