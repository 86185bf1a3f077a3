#pragma once

#include <QString>

namespace quenvolta
{

/// A folder that is to become the folder of the repositories.
class RepositoriesRoot
{
public:
    /// ProviderError (WBEM_E_INVALID_PARAMETER) unless it is an absolute path that can stand in the web service's
    /// configuration.
    explicit RepositoriesRoot(const QString& path);

    /// Without "." and "..", and without a slash at its end.
    const QString& Path() const { return m_path; }

    bool Exists() const;

    /// Makes the folder and those above it that are missing; the folder itself for the server's account alone.
    void Make() const;

    /// Gives the folder, and the repositories in it, to the server's account, where root started the provider. A folder
    /// that holds anything beside repositories is somebody else's too, and stays as it is.
    void HandOver() const;

    /// ProviderError unless the server's account can use the folder.
    void RequireAccess() const;

private:
    QString m_path;
};

} // namespace quenvolta
