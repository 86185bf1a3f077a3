#pragma once

#include "provider/activities/import_source.h"
#include "provider/svn/svn_cancel.h"

#include <QString>

namespace quenvolta
{

/// Makes a repository in an empty folder from one that is somewhere else.
class RepositoryImport
{
public:
    /// A copy of a repository that may be in use. It keeps its identity, hooks and configuration: it is the same
    /// repository at another place.
    static void HotCopy(const ImportSource& source, const QString& folder, const CancelCheck& cancel);

    /// A new repository with the revisions of a dump file, and with the identity that the file names. Properties of
    /// Subversion's own that older versions let pass (line ends) are mended; what can't be is refused. No hooks run.
    static void Load(const ImportSource& source, const QString& folder, const CancelCheck& cancel);
};

} // namespace quenvolta
