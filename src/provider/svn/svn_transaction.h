#pragma once

#include "provider/svn/svn_repository.h"

#include <QByteArray>

#include <optional>

namespace quenvolta
{

/// One commit in the making, on top of the youngest revision. Ends with the object unless it was committed: nothing of
/// it stays in the repository then, but for an empty transaction when the library fails while it begins one. No hook of
/// the repository runs.
class SvnTransaction
{
public:
    SvnTransaction(const SvnRepository& repository, const QByteArray& author, const QByteArray& message,
                   const QByteArray& requestId);
    ~SvnTransaction();
    Q_DISABLE_COPY_MOVE(SvnTransaction)

    svn_fs_root_t* Root() const { return m_root; }
    SvnPool& Pool() { return m_pool; }

    /// The new revision, or nothing when another commit came between that touches the same.
    std::optional<svn_revnum_t> Commit();

private:
    void Abort();
    void SetProperty(const char* name, const QByteArray& value);

    const SvnRepository& m_repository;
    SvnPool m_pool;
    svn_fs_txn_t* m_transaction = nullptr;
    svn_fs_root_t* m_root = nullptr;
};

} // namespace quenvolta
