#include "provider/svn/svn_transaction.h"

#include "provider/svn/repository_texts.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_log.h"

#include <svn_error.h>
#include <svn_fs.h>
#include <svn_props.h>
#include <svn_string.h>

namespace quenvolta
{

SvnTransaction::SvnTransaction(const SvnRepository& repository, const QByteArray& author, const QByteArray& message,
                               const QByteArray& requestId)
    : m_repository(repository)
{
    svn_fs_t* fs = repository.Filesystem();
    // Locks that other people hold on files are respected, as any client would.
    svn_fs_access_t* access = nullptr;
    CheckSvn(svn_fs_create_access(&access, author.constData(), m_pool.Get()), texts::kCannotChange, repository.Name());
    CheckSvn(svn_fs_set_access(fs, access), texts::kCannotChange, repository.Name());
    CheckSvn(svn_fs_begin_txn2(&m_transaction, fs, repository.YoungestRevision(), SVN_FS_TXN_CHECK_LOCKS, m_pool.Get()),
             texts::kCannotChange, repository.Name());
    try {
        SetProperty(SVN_PROP_REVISION_AUTHOR, author);
        SetProperty(SVN_PROP_REVISION_LOG, message);
        if (!requestId.isEmpty())
            SetProperty(SvnRepository::kRequestProperty, requestId);
        CheckSvn(svn_fs_txn_root(&m_root, m_transaction, m_pool.Get()), texts::kCannotChange, repository.Name());
    } catch (...) {
        Abort();
        throw;
    }
}

SvnTransaction::~SvnTransaction()
{
    Abort();
    svn_error_clear(svn_fs_set_access(m_repository.Filesystem(), nullptr));
}

std::optional<svn_revnum_t> SvnTransaction::Commit()
{
    const char* conflict = nullptr;
    svn_revnum_t revision = SVN_INVALID_REVNUM;
    svn_error_t* error = svn_fs_commit_txn(&conflict, &revision, m_transaction, m_pool.Get());
    if (SVN_IS_VALID_REVNUM(revision)) {
        m_transaction = nullptr;
        if (error != nullptr) // the commit itself stands
            qCWarning(logSvn) << "after the commit of revision" << revision << ':'
                              << svn_error_root_cause(error)->apr_err;
        svn_error_clear(error);
        return revision;
    }
    if (svn_error_find_cause(error, SVN_ERR_FS_CONFLICT) != nullptr ||
        svn_error_find_cause(error, SVN_ERR_FS_TXN_OUT_OF_DATE) != nullptr) {
        svn_error_clear(error);
        return std::nullopt;
    }
    CheckSvn(error, texts::kCannotChange, m_repository.Name());
    return std::nullopt;
}

void SvnTransaction::Abort()
{
    if (m_transaction == nullptr)
        return;
    if (svn_error_t* error = svn_fs_abort_txn(m_transaction, m_pool.Get())) {
        qCWarning(logSvn) << "cannot abort a transaction of" << m_repository.Name() << error->apr_err;
        svn_error_clear(error);
    }
    m_transaction = nullptr;
}

void SvnTransaction::SetProperty(const char* name, const QByteArray& value)
{
    const svn_string_t* text =
        svn_string_ncreate(value.constData(), static_cast<apr_size_t>(value.size()), m_pool.Get());
    CheckSvn(svn_fs_change_txn_prop(m_transaction, name, text, m_pool.Get()), texts::kCannotChange,
             m_repository.Name());
}

} // namespace quenvolta
