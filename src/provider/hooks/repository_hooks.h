#pragma once

#include "provider/provider_texts.h"
#include "provider/unique_fd.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace quenvolta
{

/// The hook scripts of one repository, as Subversion finds them: files in its folder `hooks`. Failures are
/// ProviderErrors.
///
/// A script is written whole or not at all, for the server's own account to read and run. Its text is kept to the byte:
/// line ends stay, a script that isn't UTF-8 is shown as Latin-1 and written back so as long as its text allows. A hook
/// that is a link is read through it; writing and deleting concern the link alone. A folder of hooks that is a link is
/// read through too, but never changed, for it may serve other repositories.
class RepositoryHooks
{
public:
    static constexpr qsizetype kLongestScript = 1024 * 1024;

    /// `folder` is the repository's. Beside it, in `root`, scripts are put together.
    RepositoryHooks(QString root, QString folder, QString repositoryName);

    /// The text of a hook; nothing when there is none. Empty for a link that leads nowhere, which Subversion takes for
    /// a hook and fails to run. WBEM_E_INVALID_PARAMETER for a number that stands for no hook.
    std::optional<QString> Read(qint32 kind) const;
    void Write(qint32 kind, const QString& text) const;
    /// Does nothing when there is none.
    void Delete(qint32 kind) const;

private:
    struct Hook;

    Hook Require(qint32 kind) const;
    QByteArray FolderPath() const;
    UniqueFd OpenFolder(const Hook& hook) const;
    std::optional<QByteArray> Content(const Hook& hook) const;
    QByteArray Encode(const Hook& hook, const QString& text) const;
    int Replace(const Hook& hook, int hooks, const QByteArray& script, const QString& stagingRoot) const;
    [[noreturn]] void Refuse(const Hook& hook, const replies::Text& text) const;
    [[noreturn]] void Fail(const Hook& hook, const replies::Text& what, int error) const;

    QString m_root;
    QString m_folder;
    QString m_name;
};

} // namespace quenvolta
