#include "provider/activities/import_source.h"

#include "provider/activities/activity_texts.h"
#include "provider/provider_error.h"
#include "provider/svn/hidden_folder.h"
#include "provider/svn/repository_names.h"
#include "provider/svn/repository_texts.h"
#include "provider/svn/svn_failure.h"
#include "provider/svn/svn_pool.h"
#include "provider/svn/svn_repository.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <svn_fs.h>
#include <sys/stat.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kLongestPath = 4096;
constexpr std::uint32_t kStandalone = 0;

// `path` is `folder` or in it; both without links.
bool IsInside(const QString& path, const QString& folder)
{
    return path == folder || path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

QString Resolve(const QString& path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(QFile::encodeName(path).constData(), nullptr),
                                                           &std::free);
    if (real)
        return QFile::decodeName(real.get());
    if (errno == ENOENT || errno == ENOTDIR)
        throw ProviderError(WBEM_E_NOT_FOUND, replies::kImportSourceMissing.arg(RepositoryNames::ShowFile(path)));
    ThrowSystemError(errno, replies::kCannotReachSource.arg(RepositoryNames::ShowFile(path)));
}

} // namespace

ImportSource::ImportSource(const QString& path)
{
    if (path.size() > kLongestPath || path.contains(QChar(u'\0')) || !path.isValidUtf16())
        throw ProviderError(WBEM_E_INVALID_PARAMETER, replies::kImportPathInvalid.arg(RepositoryNames::ShowFile(path)));
    if (!path.startsWith(u'/'))
        throw ProviderError(WBEM_E_INVALID_PARAMETER,
                            replies::kImportPathRelative.arg(RepositoryNames::ShowFile(path)));
    m_path = Resolve(path);
}

std::uint32_t ImportSource::RepositoryKind() const
{
    if (!QFileInfo(m_path + "/format"_L1).isFile() || !QFileInfo(m_path + "/db"_L1).isDir()) {
        // Where nobody may look, it can't be said that there is none.
        if (QFileInfo(m_path).isDir() && ::access(QFile::encodeName(m_path).constData(), X_OK) != 0)
            ThrowSystemError(errno, replies::kCannotReachSource.arg(RepositoryNames::ShowFile(m_path)));
        throw ProviderError(WBEM_E_INVALID_PARAMETER,
                            replies::kSourceNotARepository.arg(RepositoryNames::ShowFile(m_path)));
    }
    SvnPool pool;
    const char* type = nullptr;
    CheckSvn(svn_fs_type(&type, (m_path + "/db"_L1).toUtf8().constData(), pool.Get()), texts::kCannotOpen, m_path);
    if (QByteArrayView(type) != SVN_FS_TYPE_FSFS)
        throw ProviderError(WBEM_E_NOT_SUPPORTED,
                            replies::kSourceOtherType.arg(RepositoryNames::ShowFile(m_path), QString::fromUtf8(type)));
    SvnRepository(m_path.toUtf8(), m_path, pool).YoungestRevision(); // it must be one that can be read
    return kStandalone;
}

void ImportSource::RequireApartFrom(const QString& repositoriesRoot) const
{
    const QString root = Resolve(repositoriesRoot);
    if (IsInside(root, m_path))
        throw ProviderError(WBEM_E_INVALID_PARAMETER,
                            replies::kSourceHoldsServer.arg(RepositoryNames::ShowFile(m_path)));
    for (const QStringView hidden : {HiddenFolder::kCreating, HiddenFolder::kDeleting}) {
        if (m_path.startsWith(root + u'/' + hidden.toString()))
            throw ProviderError(WBEM_E_INVALID_PARAMETER,
                                replies::kSourceUnfinished.arg(RepositoryNames::ShowFile(m_path)));
    }
}

UniqueFd ImportSource::OpenFile() const
{
    // Without waiting, for a named pipe would wait for its writer.
    UniqueFd file(::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.IsOpen())
        ThrowSystemError(errno, replies::kCannotReachSource.arg(RepositoryNames::ShowFile(m_path)));
    struct stat status {
    };
    if (::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        throw ProviderError(WBEM_E_INVALID_PARAMETER, replies::kSourceNotAFile.arg(RepositoryNames::ShowFile(m_path)));
    return file;
}

} // namespace quenvolta
