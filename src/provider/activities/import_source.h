#pragma once

#include "provider/svn/svn_cancel.h"
#include "provider/unique_fd.h"

#include <QString>

#include <cstdint>

namespace quenvolta
{

/// What an administrator names to import: a folder or a file on the server. Paths come from outside; whatever is wrong
/// with one is a ProviderError that names it.
class ImportSource
{
public:
    /// Finds what is at the path, following links. WBEM_E_INVALID_PARAMETER for a path that can't be one,
    /// WBEM_E_NOT_FOUND when nothing is there.
    explicit ImportSource(const QString& path);

    /// The path without links, dots and double slashes.
    const QString& Path() const { return m_path; }

    /// What the contract calls the kind of the repository there: 0, a standalone one. WBEM_E_INVALID_PARAMETER when it
    /// is none, WBEM_E_NOT_SUPPORTED when it is stored in a way that can't be copied.
    std::uint32_t RepositoryKind() const;

    /// Refuses a repository that can't be copied to the folder `repositoriesRoot`: one that is half made there, or one
    /// that holds that folder.
    void RequireApartFrom(const QString& repositoriesRoot) const;

    /// Opens it as a file. WBEM_E_INVALID_PARAMETER when it is something else.
    UniqueFd OpenFile() const;

private:
    QString m_path;
};

} // namespace quenvolta
