#pragma once

#include <QString>

namespace quenvolta
{

/// The versions of a server and of its parts, as the server reports them.
struct ServerVersionInfo {
    QString version = {};
    QString subversionVersion = {};
    QString apacheVersion = {};
};

} // namespace quenvolta
