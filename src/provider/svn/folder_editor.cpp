#include "provider/svn/folder_editor.h"

#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"
#include "provider/svn/repository_texts.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_transaction.h"

#include <QSet>
#include <QStringEncoder>

#include <algorithm>
#include <array>
#include <pwd.h>
#include <svn_fs.h>
#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kMaxAttempts = 5;

QString RunningUser()
{
    std::array<char, 16 * 1024> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr ? QString::fromLocal8Bit(found->pw_name) : QString::number(::geteuid());
}

// Log messages have LF between their lines. The encoder turns half characters into U+FFFD; other control characters
// become the same, because they can't travel in the XML of the web service.
QByteArray Normalized(QString message)
{
    message.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    const auto isUnfit = [](QChar c) { return c.category() == QChar::Other_Control && c != u'\n' && c != u'\t'; };
    std::replace_if(message.begin(), message.end(), isUnfit, QChar(QChar::ReplacementCharacter));
    return QStringEncoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless)(message);
}

} // namespace

FolderEditor::FolderEditor(const SvnRepository& repository, const CommitNote& note, const CancelCheck& cancel)
    : m_repository(repository)
    , m_cancel(cancel)
    , m_author((note.author.isEmpty() ? RunningUser() : note.author).toUtf8())
    , m_message(Normalized(note.message))
    , m_requestId(note.requestId.toUtf8())
    , m_repeated(note.repeated)
{
}

svn_revnum_t FolderEditor::Create(const QStringList& paths)
{
    std::for_each(paths.begin(), paths.end(), &RepositoryNames::CheckNewPath);
    return CommitEdit(Sorted(paths), &FolderEditor::MakeFolders);
}

svn_revnum_t FolderEditor::Delete(const QStringList& paths)
{
    std::for_each(paths.begin(), paths.end(), &RepositoryNames::CheckPath);
    if (paths.contains(u"/"_s))
        m_repository.Refuse(WBEM_E_INVALID_PARAMETER, texts::kRootCannotBeDeleted);
    return CommitEdit(Sorted(paths), &FolderEditor::RemoveEntries);
}

/// Parents come before what they hold.
QStringList FolderEditor::Sorted(const QStringList& paths) const
{
    if (paths.isEmpty())
        m_repository.Refuse(WBEM_E_INVALID_PARAMETER, texts::kNoPaths);
    if (paths.size() > kMaxPaths)
        m_repository.Refuse(WBEM_E_INVALID_PARAMETER, texts::kTooManyPaths, QString::number(kMaxPaths));
    QStringList sorted = paths;
    sorted.sort();
    const auto twice = std::adjacent_find(sorted.begin(), sorted.end());
    if (twice != sorted.end())
        m_repository.Refuse(WBEM_E_INVALID_PARAMETER, texts::kPathTwice, *twice);
    return sorted;
}

svn_revnum_t FolderEditor::CommitEdit(const QStringList& paths, Edit edit)
{
    if (m_repeated) {
        if (const auto revision = m_repository.FindCommitOf(m_requestId))
            return *revision;
    }
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        SvnTransaction transaction(m_repository, m_author, m_message, m_requestId);
        (this->*edit)(transaction, paths);
        ThrowIfCancelled(m_cancel);
        try {
            if (const auto revision = transaction.Commit())
                return *revision;
        } catch (const ProviderError& error) {
            if (error.Code() != WBEM_E_ACCESS_DENIED || !m_repository.ClearInterruptedCommit())
                throw;
        }
    }
    m_repository.Refuse(WBEM_E_FAILED, texts::kChangedMeanwhile);
}

void FolderEditor::MakeFolders(SvnTransaction& transaction, const QStringList& paths)
{
    SvnPool step(transaction.Pool());
    for (const QString& path : paths) {
        step.Clear();
        ThrowIfCancelled(m_cancel);
        if (m_repository.KindAt(transaction.Root(), path, step) != svn_node_none)
            m_repository.Refuse(WBEM_E_ALREADY_EXISTS, texts::kEntryExists, path);
        const QString parent = RepositoryNames::ParentOf(path);
        const svn_node_kind_t kind = m_repository.KindAt(transaction.Root(), parent, step);
        if (kind == svn_node_none)
            m_repository.Refuse(WBEM_E_NOT_FOUND, texts::kParentMissing, parent);
        if (kind != svn_node_dir)
            m_repository.Refuse(WBEM_E_INVALID_PARAMETER, texts::kNotAFolder, parent);
        CheckSvn(svn_fs_make_dir(transaction.Root(), path.toUtf8().constData(), step.Get()), texts::kCannotChange,
                 m_repository.Name());
    }
}

void FolderEditor::RemoveEntries(SvnTransaction& transaction, const QStringList& paths)
{
    SvnPool step(transaction.Pool());
    for (const QString& path : paths) {
        step.Clear();
        if (m_repository.KindAt(transaction.Root(), path, step) == svn_node_none)
            m_repository.Refuse(WBEM_E_NOT_FOUND, texts::kEntryMissing, path);
    }
    QSet<QString> removed;
    for (const QString& path : paths) {
        step.Clear();
        ThrowIfCancelled(m_cancel);
        QString above = RepositoryNames::ParentOf(path);
        while (!above.isEmpty() && !removed.contains(above))
            above = RepositoryNames::ParentOf(above);
        if (above.isEmpty()) {
            CheckSvn(svn_fs_delete(transaction.Root(), path.toUtf8().constData(), step.Get()), texts::kCannotChange,
                     m_repository.Name());
            removed.insert(path);
        }
    }
}

} // namespace quenvolta
