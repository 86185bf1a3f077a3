#pragma once

#include "provider/svn/svn_cancel.h"
#include "provider/svn/svn_repository.h"

#include <QString>
#include <QStringList>

namespace quenvolta
{

class SvnTransaction;

/// What a commit says of itself.
struct CommitNote {
    QString message;
    QString author;         ///< empty: the user account that runs this process
    QString requestId = {}; ///< kept with the commit when it isn't empty
    bool repeated = false; ///< the request was made before: a commit of it may be there, and then no second one is made
};

/// Makes and removes folders of one repository, each call one commit that no hook sees. When another commit comes
/// between, the work is done again on top of it, a few times. After a failure the repository is as it was.
class FolderEditor
{
public:
    static constexpr qsizetype kMaxPaths = 10'000;

    FolderEditor(const SvnRepository& repository, const CommitNote& note, const CancelCheck& cancel);

    /// Makes the folders, in whatever order they are given; each parent must exist or be in the list. Returns the new
    /// revision. ProviderError: WBEM_E_ALREADY_EXISTS, WBEM_E_NOT_FOUND (a parent), WBEM_E_INVALID_PARAMETER (an
    /// invalid path, one given twice, a file as a parent, no path at all, more than kMaxPaths).
    svn_revnum_t Create(const QStringList& paths);

    /// Removes the folders (or files); those within others of the list may be named too. Returns the new revision.
    /// ProviderError: WBEM_E_NOT_FOUND, WBEM_E_INVALID_PARAMETER (as above, and for "/").
    svn_revnum_t Delete(const QStringList& paths);

private:
    using Edit = void (FolderEditor::*)(SvnTransaction&, const QStringList&);

    QStringList Sorted(const QStringList& paths) const;
    svn_revnum_t CommitEdit(const QStringList& paths, Edit edit);
    void MakeFolders(SvnTransaction& transaction, const QStringList& paths);
    void RemoveEntries(SvnTransaction& transaction, const QStringList& paths);

    const SvnRepository& m_repository;
    const CancelCheck& m_cancel;
    QByteArray m_author;
    QByteArray m_message;
    QByteArray m_requestId;
    bool m_repeated;
};

} // namespace quenvolta
