#include "provider/svn/svn_repository.h"

#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"
#include "provider/svn/repository_texts.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_log.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <apr_strings.h>
#include <cstdint>
#include <svn_error.h>
#include <svn_fs.h>
#include <sys/stat.h>
#include <vector>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// Entries between one that is read and one that memory is asked for.
constexpr std::size_t kAhead = 8;

// So many commits of others may have come after a repeated request's own.
constexpr svn_revnum_t kLookedBack = 100;

// Without a callback of ours the library ends the process when it has something to say.
void LogWarning(void* /*baton*/, svn_error_t* error)
{
    for (const svn_error_t* cause = error; cause != nullptr; cause = cause->child)
        qCWarning(logSvn) << cause->apr_err << (cause->message != nullptr ? cause->message : "");
}

// The library keeps what it read for the life of the process, by identity and path. A copy that was put back there from
// a backup has the same of both and other revisions; the file of its identity is a new one, though.
apr_hash_t* CacheConfiguration(const QByteArray& path, apr_pool_t* pool)
{
    struct stat identity {
    };
    ::stat((path + "/db/uuid").constData(), &identity); // opening it tells what is wrong
    const char* marker = apr_psprintf(pool, "%ju-%jd-%ld", static_cast<std::uintmax_t>(identity.st_ino),
                                      static_cast<std::intmax_t>(identity.st_ctim.tv_sec), identity.st_ctim.tv_nsec);
    apr_hash_t* config = apr_hash_make(pool);
    apr_hash_set(config, SVN_FS_CONFIG_FSFS_CACHE_NS, APR_HASH_KEY_STRING, marker);
    return config;
}

// The file of a revision's properties below the filesystem's folder.
QString RevisionPropertiesFile(const QString& folder, svn_revnum_t revision)
{
    QFile format(folder + "/format"_L1);
    if (!format.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression kSharded(u"layout sharded ([1-9][0-9]*)"_s);
    const QString shardSize = kSharded.match(QString::fromLatin1(format.readAll())).captured(1);
    const QString shard = shardSize.isEmpty() ? QString() : QString::number(revision / shardSize.toLong()) + u'/';
    return folder + "/revprops/"_L1 + shard + QString::number(revision);
}

// While nobody can commit: the properties of a revision beyond the youngest one belong to nothing.
svn_error_t* ClearOrphanedProperties(void* baton, apr_pool_t* pool)
{
    auto* fs = static_cast<svn_fs_t*>(baton);
    svn_revnum_t youngest = 0;
    SVN_ERR(svn_fs_youngest_rev(&youngest, fs, pool));
    QFile::remove(RevisionPropertiesFile(QString::fromUtf8(svn_fs_path(fs, pool)), youngest + 1));
    return SVN_NO_ERROR;
}

} // namespace

SvnRepository::SvnRepository(const QByteArray& path, const QString& name, SvnPool& pool, Flush flush)
    : m_pool(pool)
    , m_name(name)
{
    apr_hash_t* config = CacheConfiguration(path, pool.Get());
    if (flush == Flush::Caller)
        apr_hash_set(config, SVN_FS_CONFIG_NO_FLUSH_TO_DISK, APR_HASH_KEY_STRING, "1");
    CheckSvn(svn_repos_open3(&m_repository, path.constData(), config, pool.Get(), pool.Get()), texts::kCannotOpen,
             name);
    svn_fs_set_warning_func(Filesystem(), &LogWarning, nullptr);
}

void SvnRepository::CreateEmpty(const QString& folder, const QString& name)
{
    SvnPool pool;
    apr_hash_t* config = apr_hash_make(pool.Get());
    apr_hash_set(config, SVN_FS_CONFIG_FS_TYPE, APR_HASH_KEY_STRING, SVN_FS_TYPE_FSFS);
    svn_repos_t* repository = nullptr;
    CheckSvn(svn_repos_create(&repository, folder.toUtf8().constData(), nullptr, nullptr, nullptr, config, pool.Get()),
             texts::kCannotCreate, name);
}

svn_revnum_t SvnRepository::YoungestRevision() const
{
    svn_revnum_t revision = SVN_INVALID_REVNUM;
    CheckSvn(svn_fs_youngest_rev(&revision, Filesystem(), m_pool.Get()), texts::kCannotRead, m_name);
    return revision;
}

bool SvnRepository::ClearInterruptedCommit() const
{
    const QString folder = QString::fromUtf8(svn_fs_path(Filesystem(), m_pool.Get()));
    if (!QFile::exists(RevisionPropertiesFile(folder, YoungestRevision() + 1)))
        return false;
    CheckSvn(svn_fs_freeze(Filesystem(), ClearOrphanedProperties, Filesystem(), m_pool.Get()), texts::kCannotChange,
             m_name);
    return true;
}

std::optional<svn_revnum_t> SvnRepository::FindCommitOf(const QByteArray& requestId) const
{
    const svn_revnum_t youngest = YoungestRevision();
    SvnPool step(m_pool);
    for (svn_revnum_t revision = youngest; revision > std::max<svn_revnum_t>(0, youngest - kLookedBack); --revision) {
        step.Clear();
        svn_string_t* value = nullptr;
        CheckSvn(svn_fs_revision_prop2(&value, Filesystem(), revision, kRequestProperty, FALSE, step.Get(), step.Get()),
                 texts::kCannotRead, m_name);
        if (value != nullptr && requestId == QByteArrayView(value->data, static_cast<qsizetype>(value->len)))
            return revision;
    }
    return std::nullopt;
}

bool SvnRepository::HasCapability(const QString& capability) const
{
    svn_boolean_t has = FALSE;
    svn_error_t* error = svn_repos_has_capability(m_repository, &has, capability.toUtf8().constData(), m_pool.Get());
    if (error != nullptr && svn_error_find_cause(error, SVN_ERR_UNKNOWN_CAPABILITY) != nullptr) {
        svn_error_clear(error);
        return false;
    }
    CheckSvn(error, texts::kCannotRead, m_name);
    return has != FALSE;
}

RepositoryEntry SvnRepository::Entry(const QString& path) const
{
    const svn_node_kind_t kind = KindAt(YoungestRoot(), path, m_pool);
    if (kind == svn_node_none)
        Refuse(WBEM_E_NOT_FOUND, texts::kEntryMissing, path);
    const QString name = path.mid(path.size() == 1 ? 0 : path.lastIndexOf(u'/') + 1);
    return {name, path, RepositoryNames::ParentOf(path), kind == svn_node_dir};
}

void SvnRepository::VisitChildren(const QString& path, const EntryVisitor& visitor) const
{
    svn_fs_root_t* root = YoungestRoot();
    const svn_node_kind_t kind = KindAt(root, path, m_pool);
    if (kind == svn_node_none)
        Refuse(WBEM_E_NOT_FOUND, texts::kEntryMissing, path);
    if (kind != svn_node_dir)
        Refuse(WBEM_E_INVALID_PARAMETER, texts::kNotAFolder, path);

    apr_hash_t* entries = nullptr;
    CheckSvn(svn_fs_dir_entries(&entries, root, path.toUtf8().constData(), m_pool.Get()), texts::kCannotRead, m_name);

    // The table's order is none of memory's, so each entry would be waited for: they are asked for some steps ahead.
    std::vector<const svn_fs_dirent_t*> found;
    found.reserve(apr_hash_count(entries));
    for (apr_hash_index_t* at = apr_hash_first(m_pool.Get(), entries); at != nullptr; at = apr_hash_next(at))
        found.push_back(static_cast<const svn_fs_dirent_t*>(apr_hash_this_val(at)));

    const QString prefix = path.size() == 1 ? path : path + u'/';
    RepositoryEntry child;
    child.parentPath = path;
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (i + 2 * kAhead < found.size())
            __builtin_prefetch(found[i + 2 * kAhead]);
        if (i + kAhead < found.size())
            __builtin_prefetch(found[i + kAhead]->name);
        const svn_fs_dirent_t* const entry = found[i];
        child.name = QString::fromUtf8(entry->name);
        child.path.resize(0);
        child.path.append(prefix).append(child.name);
        child.isFolder = entry->kind == svn_node_dir;
        visitor(child);
    }
}

svn_node_kind_t SvnRepository::KindAt(svn_fs_root_t* root, const QString& path, SvnPool& pool) const
{
    svn_node_kind_t kind = svn_node_none;
    CheckSvn(svn_fs_check_path(&kind, root, path.toUtf8().constData(), pool.Get()), texts::kCannotRead, m_name);
    return kind;
}

void SvnRepository::Refuse(HRESULT code, QStringView format, const QString& path) const
{
    throw ProviderError(code, path.isNull() ? format.toString().arg(m_name)
                                            : format.toString().arg(m_name, RepositoryNames::Show(path)));
}

svn_fs_root_t* SvnRepository::YoungestRoot() const
{
    svn_fs_root_t* root = nullptr;
    CheckSvn(svn_fs_revision_root(&root, Filesystem(), YoungestRevision(), m_pool.Get()), texts::kCannotRead, m_name);
    return root;
}

} // namespace quenvolta
