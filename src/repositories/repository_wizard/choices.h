#pragma once

#include "model/permission_entry.h"

#include <QString>
#include <QStringList>

namespace quenvolta::RepositoryWizard
{

enum class RepositoryType { Fsfs = 1, Qdfs = 2 };

/// What a new master repository begins with.
enum class InitialContent {
    Empty = 0,
    SingleProject = 1, ///< the folders trunk, branches and tags
    Import = 2,        ///< the data of an existing repository
};

/// What an import brings along besides the data.
struct ImportOptions {
    bool permissions = true;
    bool delegation = true;
    bool hooks = true;
};

/// The repository to create, as it was chosen. Each kind uses what belongs to it.
struct NewRepository {
    QString name = {};
    bool singleProject = false;
    PermissionList permissions = {};
    /// The security identifiers of those who may replicate a master.
    QStringList replicators = {};
    QString importPath = {};
    ImportOptions importOptions = {};
    QString masterServer = {};
    QString masterRepository = {};
};

} // namespace quenvolta::RepositoryWizard
