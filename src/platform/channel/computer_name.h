#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace quenvolta
{

/// A computer as an administrator names it: `host`, `user@host`, `host:port` or both. Every part is safe to stand on a
/// command line.
struct ComputerName {
    /// A DNS name or ssh alias, an IPv4 address, or an IPv6 address (typed in brackets, kept without). Empty for the
    /// local computer.
    QString host;
    /// Empty when none was typed.
    QString user;
    /// 0 when none was typed.
    std::uint16_t port = 0;

    bool IsLocal() const { return host.isEmpty(); }
    /// Equal for names that lead to the same connection; empty for the local computer.
    QString Key() const;
};

/// Reads a name; nothing when it can't be one. Nothing typed, or ".", is the local computer.
std::optional<ComputerName> ParseComputerName(QStringView typed);

} // namespace quenvolta
