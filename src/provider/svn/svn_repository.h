#pragma once

#include "platform/hresult.h"
#include "provider/svn/svn_pool.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <svn_repos.h>

namespace quenvolta
{

/// A folder or file in a repository.
struct RepositoryEntry {
    QString name;       ///< the last element of the path; "/" for the root
    QString path;       ///< from the repository's root, begins with "/"
    QString parentPath; ///< empty for the root
    bool isFolder = false;
};

/// An opened repository; lives in the pool it was opened in. All failures are ProviderErrors.
class SvnRepository
{
public:
    /// When what is written is brought to the disk: at each commit, or by the caller when all is done.
    enum class Flush { EachCommit, Caller };

    /// `path` is the folder on the disk (canonical, UTF-8); `name` is for the messages.
    SvnRepository(const QByteArray& path, const QString& name, SvnPool& pool, Flush flush = Flush::EachCommit);

    /// Makes an empty repository in the empty folder `folder`.
    static void CreateEmpty(const QString& folder, const QString& name);

    svn_repos_t* Handle() const { return m_repository; }
    const QString& Name() const { return m_name; }
    svn_fs_t* Filesystem() const { return svn_repos_fs(m_repository); }

    /// The revision property that tells which request of a console made a commit.
    static constexpr char kRequestProperty[] = "quenvolta:request";

    svn_revnum_t YoungestRevision() const;

    /// The commit that a request made, when it is one of the last hundred: others may have committed since.
    std::optional<svn_revnum_t> FindCommitOf(const QByteArray& requestId) const;

    /// Clears what a commit that was killed in its last moment left in the way of the next one: the properties of a
    /// revision that never came to be, in a file that only root could write to again. True when there was something.
    bool ClearInterruptedCommit() const;

    /// Whether it can do what the library calls `capability` ("mergeinfo"); false for what the library doesn't know.
    bool HasCapability(const QString& capability) const;

    /// The entry at a path in the youngest revision; WBEM_E_NOT_FOUND when there is none.
    RepositoryEntry Entry(const QString& path) const;

    using EntryVisitor = std::function<void(const RepositoryEntry&)>;
    /// Hands over what the folder at a path holds in the youngest revision, in no order: whoever shows it has his own.
    void VisitChildren(const QString& path, const EntryVisitor& visitor) const;

    /// The kind of what stands at `path` under `root`; svn_node_none when nothing does. `pool` is for what it needs.
    svn_node_kind_t KindAt(svn_fs_root_t* root, const QString& path, SvnPool& pool) const;

    /// The ProviderError of `code` that speaks of `path` in this repository.
    [[noreturn]] void Refuse(HRESULT code, QStringView format, const QString& path = {}) const;

private:
    svn_fs_root_t* YoungestRoot() const;

    SvnPool& m_pool;
    QString m_name;
    svn_repos_t* m_repository = nullptr;
};

} // namespace quenvolta
