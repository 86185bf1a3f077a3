#pragma once

#include "async/progress_texts.h"

namespace quenvolta
{

/// The operations of the server that can run for minutes.
enum class ActivityKind {
    ImportCopy,      ///< a repository from another one's folder
    ImportDump,      ///< a repository from a dump file
    ImportUntold,    ///< a repository from what only the server knows
    ImportMaster,    ///< a distributed repository from an existing one
    ExportSeed,      ///< a replication seed
    CheckConsistency ///< of a slave with its master; can't be cancelled
};

/// What the progress dialog says of one.
ProgressTexts ProgressTextsOf(ActivityKind kind);

} // namespace quenvolta
