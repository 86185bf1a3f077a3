#include "provider/svn/repository_store.h"

#include "provider/svn/durable_files.h"
#include "provider/svn/hidden_folder.h"
#include "provider/svn/repository_names.h"
#include "provider/svn/repository_texts.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_log.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <svn_repos.h>
#include <sys/stat.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// Every ext file system has this one at its top; it is nobody's repository.
constexpr QStringView kLostAndFound = u"lost+found";

bool IsKind(int folder, const char* name, mode_t kind)
{
    struct stat status {
    };
    return ::fstatat(folder, name, &status, 0) == 0 && (status.st_mode & S_IFMT) == kind;
}

// Names that aren't UTF-8, or not valid here, can't be addressed and so aren't shown; QString must give the same bytes
// back.
std::optional<QString> ListableName(const std::string& bytes)
{
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    if (bytes.front() == '.' || !view.isValidUtf8())
        return std::nullopt;
    QString name = QString::fromUtf8(view);
    try {
        RepositoryNames::CheckName(name);
    } catch (const ProviderError&) {
        return std::nullopt;
    }
    return name;
}

void ThrowIfFailed(int error, QStringView format, const QString& name)
{
    if (error != 0)
        ThrowSystemError(error, format.toString().arg(name));
}

// In a repository's folder: which request of a console made it.
QString MarkPath(const QByteArray& repositoryFolder)
{
    return QString::fromUtf8(repositoryFolder) + "/quenvolta-request"_L1;
}

bool WriteMark(const QString& path, const QString& requestId)
{
    QFile::remove(path); // a copy brings the mark of its original
    QFile mark(path);
    const QByteArray text = requestId.toUtf8();
    return mark.open(QIODevice::WriteOnly | QIODevice::NewOnly) && mark.write(text) == text.size() && mark.flush();
}

QString ReadMark(const QString& path)
{
    constexpr qint64 kLongest = 256;
    QFile mark(path);
    return mark.open(QIODevice::ReadOnly) ? QString::fromUtf8(mark.read(kLongest)) : QString();
}

// `name` is the repository that the messages of a failure speak of, `to` the name that may be taken.
void MoveIntoPlace(int fromFolder, const char* from, int toFolder, const QString& to, QStringView format,
                   const QString& name)
{
    const int error = DurableFiles::MoveNoReplace(fromFolder, from, toFolder, to.toUtf8().constData());
    if (error == EEXIST)
        throw ProviderError(WBEM_E_ALREADY_EXISTS, texts::kRepositoryExists.toString().arg(to));
    if (error == ENOENT)
        throw ProviderError(WBEM_E_NOT_FOUND, texts::kRepositoryMissing.toString().arg(name));
    ThrowIfFailed(error, format, name);
}

} // namespace

RepositoryStore::RepositoryStore(const QString& rootFolder)
    : m_root(QDir::cleanPath(QDir(rootFolder).absolutePath()))
{
}

void RepositoryStore::Visit(const Visitor& visitor, const CancelCheck& cancel) const
{
    SvnPool pool;
    SvnPool step(pool);
    for (const QString& name : CandidateNames()) {
        step.Clear();
        ThrowIfCancelled(cancel);
        RepositoryRecord record{name, std::nullopt, std::nullopt};
        try {
            record.youngestRevision =
                static_cast<quint32>(SvnRepository(FolderOf(name), name, step).YoungestRevision());
        } catch (const ProviderError& error) {
            record.error = error;
        }
        // Only what failed is looked at more closely, so that a long list costs no more than opening each.
        if (record.error && Probe(OpenRoot().Get(), name) < Presence::Unreadable)
            continue;
        visitor(std::move(record));
    }
}

std::vector<RepositoryRecord> RepositoryStore::List(const CancelCheck& cancel) const
{
    std::vector<RepositoryRecord> records;
    Visit([&records](RepositoryRecord record) { records.push_back(std::move(record)); }, cancel);
    return records;
}

RepositoryRecord RepositoryStore::Read(const QString& name) const
{
    SvnPool pool;
    return {name, static_cast<quint32>(Open(name, pool).YoungestRevision()), std::nullopt};
}

bool RepositoryStore::Exists(const QString& name) const
{
    RepositoryNames::CheckName(name);
    return Probe(OpenRoot().Get(), name) >= Presence::Unreadable;
}

void RepositoryStore::Create(const QString& name, const QString& requestId, bool repeated) const
{
    Plan plan;
    plan.fill = [&name](const QString& folder) { SvnRepository::CreateEmpty(folder, name); };
    plan.requestId = requestId;
    plan.repeated = repeated;
    Build(name, plan);
}

void RepositoryStore::Build(const QString& name, const Plan& plan) const
{
    RepositoryNames::CheckNewName(name);
    const UniqueFd root = OpenRoot();
    if (WasBuilt(root.Get(), name, plan))
        return;
    if (Probe(root.Get(), name) != Presence::Absent)
        throw ProviderError(WBEM_E_ALREADY_EXISTS, texts::kRepositoryExists.toString().arg(name));

    const HiddenFolder hidden(m_root, root.Get(), HiddenFolder::kCreating);
    if (::mkdirat(hidden.Fd(), HiddenFolder::kContent, S_IRWXU) != 0)
        ThrowIfFailed(errno, texts::kCannotCreate, name);
    plan.fill(hidden.ContentPath());
    if (!plan.requestId.isEmpty() && !WriteMark(MarkPath(hidden.ContentPath().toUtf8()), plan.requestId))
        ThrowIfFailed(errno, texts::kCannotCreate, name);
    ThrowIfFailed(DurableFiles::SyncTree(hidden.ContentPath(), plan.cancel), texts::kCannotCreate, name);
    if (plan.beforeMove)
        plan.beforeMove();
    ThrowIfCancelled(plan.cancel);
    if (WasBuilt(root.Get(), name, plan)) // by the process that began this, and ended late
        return;
    MoveIntoPlace(hidden.Fd(), HiddenFolder::kContent, root.Get(), name, texts::kCannotCreate, name);
    SyncRoot(root.Get());
}

bool RepositoryStore::WasBuilt(int rootFd, const QString& name, const Plan& plan) const
{
    return plan.repeated && Probe(rootFd, name) == Presence::Repository &&
           ReadMark(MarkPath(FolderOf(name))) == plan.requestId;
}

void RepositoryStore::Rename(const QString& oldName, const QString& newName) const
{
    RepositoryNames::CheckName(oldName);
    RepositoryNames::CheckNewName(newName);
    const UniqueFd root = OpenRoot();
    RequireRepository(root.Get(), oldName);
    MoveIntoPlace(root.Get(), oldName.toUtf8().constData(), root.Get(), newName, texts::kCannotRename, oldName);
    SyncRoot(root.Get());
}

void RepositoryStore::Delete(const QString& name) const
{
    RepositoryNames::CheckName(name);
    const UniqueFd root = OpenRoot();
    RequireRepository(root.Get(), name);
    HiddenFolder hidden(m_root, root.Get(), HiddenFolder::kDeleting);
    MoveIntoPlace(root.Get(), name.toUtf8().constData(), hidden.Fd(), QLatin1StringView(HiddenFolder::kContent),
                  texts::kCannotDelete, name);
    SyncRoot(root.Get());
    if (const int error = hidden.Remove(); error != 0)
        ThrowSystemError(error, texts::kNotAllRemoved.toString().arg(name, hidden.Path()));
}

RepositoryEntry RepositoryStore::Entry(const QString& name, const QString& path) const
{
    RepositoryNames::CheckPath(path);
    SvnPool pool;
    return Open(name, pool).Entry(path);
}

void RepositoryStore::VisitChildren(const QString& name, const QString& path,
                                    const SvnRepository::EntryVisitor& visitor) const
{
    RepositoryNames::CheckPath(path);
    SvnPool pool;
    Open(name, pool).VisitChildren(path, visitor);
}

std::vector<RepositoryEntry> RepositoryStore::Children(const QString& name, const QString& path) const
{
    std::vector<RepositoryEntry> children;
    VisitChildren(name, path, [&](const RepositoryEntry& entry) { children.push_back(entry); });
    std::ranges::sort(children, {}, &RepositoryEntry::name);
    return children;
}

quint32 RepositoryStore::CreateFolders(const QString& name, const QStringList& paths, const CommitNote& note,
                                       const CancelCheck& cancel) const
{
    SvnPool pool;
    const SvnRepository repository = Open(name, pool);
    return static_cast<quint32>(FolderEditor(repository, note, cancel).Create(paths));
}

quint32 RepositoryStore::DeleteFolders(const QString& name, const QStringList& paths, const CommitNote& note,
                                       const CancelCheck& cancel) const
{
    SvnPool pool;
    const SvnRepository repository = Open(name, pool);
    return static_cast<quint32>(FolderEditor(repository, note, cancel).Delete(paths));
}

QString RepositoryStore::RequireFolder(const QString& name) const
{
    RepositoryNames::CheckName(name);
    RequireRepository(OpenRoot().Get(), name);
    return QDir(m_root).filePath(name);
}

bool RepositoryStore::HasCapability(const QString& name, const QString& capability) const
{
    SvnPool pool;
    return Open(name, pool).HasCapability(capability);
}

void RepositoryStore::Upgrade(const QString& name) const
{
    RepositoryNames::CheckName(name);
    RequireRepository(OpenRoot().Get(), name);
    SvnPool pool;
    CheckSvn(svn_repos_upgrade2(FolderOf(name).constData(), TRUE, nullptr, nullptr, pool.Get()), texts::kCannotUpgrade,
             name);
}

int RepositoryStore::CleanLeftovers() const
{
    return HiddenFolder::RemoveLeftovers(m_root);
}

UniqueFd RepositoryStore::OpenRoot() const
{
    UniqueFd root(::open(QFile::encodeName(m_root).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!root.IsOpen() && errno == ENOENT)
        throw ProviderError(WBEM_E_FAILED, texts::kRootMissing.toString().arg(m_root));
    if (!root.IsOpen())
        ThrowSystemError(errno, texts::kCannotOpenRoot.toString().arg(m_root));
    return root;
}

RepositoryStore::Presence RepositoryStore::Probe(int rootFd, const QString& name)
{
    const QByteArray encoded = name.toUtf8();
    struct stat status {
    };
    if (::fstatat(rootFd, encoded.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOENT)
        return Presence::Absent;
    const UniqueFd folder(::openat(rootFd, encoded.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder.IsOpen())
        return errno == EACCES ? Presence::Unreadable : Presence::Other;
    errno = 0;
    if (IsKind(folder.Get(), "format", S_IFREG) && IsKind(folder.Get(), "db", S_IFDIR))
        return Presence::Repository;
    return errno == EACCES && name != kLostAndFound ? Presence::Unreadable : Presence::Other;
}

void RepositoryStore::RequireRepository(int rootFd, const QString& name)
{
    switch (Probe(rootFd, name)) {
    case Presence::Repository:
        return;
    case Presence::Unreadable:
        ThrowSystemError(EACCES, texts::kCannotOpen.toString().arg(name));
    case Presence::Other:
        throw ProviderError(WBEM_E_NOT_FOUND, texts::kNotARepository.toString().arg(name));
    case Presence::Absent:
        throw ProviderError(WBEM_E_NOT_FOUND, texts::kRepositoryMissing.toString().arg(name));
    }
}

QByteArray RepositoryStore::FolderOf(const QString& name) const
{
    return QDir(m_root).filePath(name).toUtf8();
}

QStringList RepositoryStore::CandidateNames() const
{
    const UniqueFd root = OpenRoot(); // tells best why the folder can't be opened
    QStringList names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(std::filesystem::path(m_root.toStdString()), error), end;
         !error && entry != end; entry.increment(error)) {
        std::error_code ignored; // a link that leads nowhere is no repository
        if (!entry->is_directory(ignored))
            continue;
        if (const auto name = ListableName(entry->path().filename().native()))
            names << *name;
    }
    ThrowIfFailed(error.value(), texts::kCannotList, m_root);
    names.sort();
    return names;
}

SvnRepository RepositoryStore::Open(const QString& name, SvnPool& pool) const
{
    RepositoryNames::CheckName(name);
    RequireRepository(OpenRoot().Get(), name);
    return SvnRepository(FolderOf(name), name, pool);
}

void RepositoryStore::SyncRoot(int rootFd) const
{
    // The change itself stands and can be seen; only a crash right now could undo it.
    if (const int error = DurableFiles::Sync(rootFd); error != 0)
        qCWarning(logSvn) << "cannot sync" << m_root << qt_error_string(error);
}

} // namespace quenvolta
