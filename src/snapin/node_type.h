#pragma once

#include <QLatin1StringView>
#include <QUuid>

namespace quenvolta
{

/// The class identifier of the standalone snap-in, which all nodes name as theirs.
inline constexpr QUuid kStandaloneClassId{0x08B017E8, 0x47AD, 0x4D1B, 0xA9, 0x28, 0x94, 0xFF, 0xD7, 0x7E, 0x99, 0x50};

/// The identity of a kind of node.
struct NodeType {
    QUuid id;
    /// The number of the default display name's text, 0 for none.
    int displayName = 0;
};

} // namespace quenvolta
