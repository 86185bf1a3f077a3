#pragma once

#include "provider/provider_error.h"
#include "provider/svn/folder_editor.h"
#include "provider/svn/svn_cancel.h"
#include "provider/svn/svn_repository.h"
#include "provider/unique_fd.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace quenvolta
{

/// A repository in a list. One that can't be opened has no revision but the error that tells why.
struct RepositoryRecord {
    QString name;
    std::optional<quint32> youngestRevision;
    std::optional<ProviderError> error;
};

/// The Subversion repositories of one folder.
///
/// A repository is a folder there with a `format` file and a `db` folder in it. A link to such a folder counts too:
/// renaming and deleting concern the link alone, what it points to stays. Names that begin with a period, that aren't
/// UTF-8 or that RepositoryNames::CheckName refuses are never listed. The folder itself must exist: making it here
/// would fill the mount point of a disk that isn't mounted yet.
///
/// Repositories are made with mode 0700: the web service runs as the same user, and nobody else has to read them.
/// Every call opens what it needs and closes it again; calls from several threads don't disturb each other. All
/// failures are ProviderErrors.
class RepositoryStore
{
public:
    using Visitor = std::function<void(RepositoryRecord)>;

    explicit RepositoryStore(const QString& rootFolder);

    /// Hands over each repository, in the order of the names' code units, as soon as it was read.
    void Visit(const Visitor& visitor, const CancelCheck& cancel = {}) const;
    std::vector<RepositoryRecord> List(const CancelCheck& cancel = {}) const;

    /// Throws WBEM_E_NOT_FOUND for what isn't there, and its own error for one that can't be opened.
    RepositoryRecord Read(const QString& name) const;
    bool Exists(const QString& name) const;

    /// Builds a new, empty repository under a hidden name and moves it into place when it is safe on the disk.
    /// WBEM_E_ALREADY_EXISTS when anything has the name.
    /// A repeated request finds the repository that it made before and is content.
    void Create(const QString& name, const QString& requestId = {}, bool repeated = false) const;
    /// A repository in the making.
    struct Plan {
        /// Makes the repository in the empty folder at this path.
        std::function<void(const QString& folder)> fill;
        /// Called when it is whole and safe on the disk, right before it gets its name. May be empty.
        std::function<void()> beforeMove;
        CancelCheck cancel;
        QString requestId;
        bool repeated = false;
    };
    /// As Create, for a repository that is made in another way. Nothing stays when it throws.
    void Build(const QString& name, const Plan& plan) const;
    void Rename(const QString& oldName, const QString& newName) const;
    /// The repository disappears at once; its files are removed before the call returns.
    void Delete(const QString& name) const;

    RepositoryEntry Entry(const QString& name, const QString& path) const;
    /// SvnRepository::VisitChildren.
    void VisitChildren(const QString& name, const QString& path, const SvnRepository::EntryVisitor& visitor) const;
    /// The same, in the order of the names' code units.
    std::vector<RepositoryEntry> Children(const QString& name, const QString& path) const;
    /// One commit each, see FolderEditor. They return the new revision.
    quint32 CreateFolders(const QString& name, const QStringList& paths, const CommitNote& note,
                          const CancelCheck& cancel = {}) const;
    quint32 DeleteFolders(const QString& name, const QStringList& paths, const CommitNote& note,
                          const CancelCheck& cancel = {}) const;

    /// The folder of a repository; throws as Read for what isn't there.
    QString RequireFolder(const QString& name) const;
    const QString& Root() const { return m_root; }

    bool HasCapability(const QString& name, const QString& capability) const;
    /// Brings the repository's format up to what this library writes. Fails at once when somebody else has it locked;
    /// can't be cancelled.
    void Upgrade(const QString& name) const;

    /// To be called at the start: removes what ended processes left half made or half removed. Returns how many.
    int CleanLeftovers() const;

private:
    /// What has a name; from Unreadable on it is, or may be, a repository.
    enum class Presence { Absent, Other, Unreadable, Repository };

    UniqueFd OpenRoot() const;
    static Presence Probe(int rootFd, const QString& name);
    static void RequireRepository(int rootFd, const QString& name);
    QByteArray FolderOf(const QString& name) const;
    bool WasBuilt(int rootFd, const QString& name, const Plan& plan) const;
    QStringList CandidateNames() const;
    SvnRepository Open(const QString& name, SvnPool& pool) const;
    void SyncRoot(int rootFd) const;

    QString m_root;
};

} // namespace quenvolta
