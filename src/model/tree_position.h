#pragma once

#include <QString>

namespace quenvolta
{

/// A place in the server's tree: an empty repository name is the server-wide level, the path "/" a repository itself.
struct TreePosition {
    QString repositoryName = {};
    QString path = {};

    bool operator==(const TreePosition&) const = default;
};

} // namespace quenvolta
