#pragma once

#include <QString>
#include <QStringView>

namespace quenvolta
{

/// Whether a folder or a project may be called so.
bool IsValidFolderName(QStringView name);

/// The path of what is called `name` in the folder ("/" is a repository itself).
QString ChildPath(const QString& folder, const QString& name);

} // namespace quenvolta
