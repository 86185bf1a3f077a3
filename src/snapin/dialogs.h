#pragma once

#include "model/tree_position.h"
#include "snapin/service_operation.h"

#include <QHash>
#include <QList>
#include <QString>

#include <functional>

class QWidget;

namespace quenvolta
{

class CModel;
class IcMessages;
class IcPreferences;
class IcShell;
struct RepositoryInfo;

/// The dialogs, wizards and property sheets that commands open.
enum class DialogKind {
    None,
    SelectComputer,
    ServerProperties,
    ServiceState, ///< carries out `operations`
    CreateRepository,
    ImportRepository,
    UpgradeRepositories,
    GlobalPermissions,    ///< the property sheet of "Repositories"
    RepositoryProperties, ///< of a repository or an entry
    RepositoryHooks,      ///< the same at this `page`
    RepositoryDelegation, ///< the same at this `page`
    CreateFolder,
    CreateProjectStructure,
    DeleteFolder,
    ConvertToQdfs,
    ConvertToFsfs,
    ConsistencyCheck,
    ExportReplicationSeed,
    CreateUser,
    SetPassword,
    CreateGroup,
    EditGroup,
};

/// What a dialog is opened with.
struct DialogRequest {
    CModel& model;
    IcMessages& messages;
    IcPreferences& preferences;
    const IcShell& shell;
    /// The window over which it opens; may be null.
    QWidget* parent = nullptr;
    /// The repository and the entry; the repository's own path is "/".
    TreePosition position = {};
    /// Of the repository; null for commands of other nodes.
    const RepositoryInfo* repository = nullptr;
    bool isFolder = true;
    /// The user or group.
    QString account = {};
    int page = 0;
    QList<ServiceOperation> operations = {};
};

/// Opens the dialog and waits for its end. True when it ended with OK.
using DialogOpener = std::function<bool(const DialogRequest& request)>;

/// Which dialogs there are. The command of a missing one is shown, but disabled.
class DialogTable
{
public:
    /// The dialogs of the program: see built_in_dialogs.cpp.
    static const DialogTable& BuiltIn();

    void Add(DialogKind kind, const DialogOpener& opener) { m_openers.insert(static_cast<int>(kind), opener); }
    bool Has(DialogKind kind) const { return m_openers.contains(static_cast<int>(kind)); }
    /// False also for a dialog that isn't there.
    bool Open(DialogKind kind, const DialogRequest& request) const;

private:
    QHash<int, DialogOpener> m_openers;
};

} // namespace quenvolta
