#pragma once

#include <QStringView>

namespace quenvolta
{

/// Whether a path begins with a drive ("C:\") or names a share of another computer ("\\server\share").
bool IsAbsoluteOrNetworkPath(QStringView path);

/// Whether the computer that keeps its repositories in the folder names files from a root "/".
bool NamesFilesFromSlash(QStringView repositoriesRoot);

/// Whether a path is absolute on the computer that keeps its repositories in the folder.
bool IsPathOnServer(QStringView path, QStringView repositoriesRoot);

} // namespace quenvolta
