#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace quenvolta::test
{

/// How a program ended.
struct ToolOutcome {
    int exitCode = -1;
    QString output = {};
    QString errors = {};
};

/// A server's data in a temporary folder, filled by the stock Subversion tools. For root's tests it belongs to the
/// account of web services, as root's provider would make it, and the tools work as that account.
class RealServer
{
public:
    RealServer();

    QString DataFolder() const { return m_folder.filePath(QStringLiteral("data")); }
    QString RepositoriesFolder() const { return DataFolder() + QStringLiteral("/repositories"); }
    /// The hidden folders in which imported repositories are put together.
    QStringList HiddenFolders() const;
    /// Whether an import has put some revisions together and goes on.
    bool IsImporting() const;
    /// A folder of the test's own beside the data.
    QString Scratch(const QString& name) const { return m_folder.filePath(name); }

    /// The provider's program that was built with the tests.
    static QString ProviderProgram();
    /// `quenvolta-provider --stdio` and what makes it serve this data, without the program.
    QStringList ProviderArguments(const QString& asVersion = {}) const;

    /// Makes a repository with svnadmin.
    void MakeWithSvnadmin(const QString& name) const;
    /// Damages it so that no library opens it.
    void Break(const QString& name) const;
    QString FileUrl(const QString& name) const;
    /// Runs the stock client; what it prints. A failure fails the test.
    QString Svn(const QStringList& arguments) const;
    QString Svnlook(const QStringList& arguments) const;
    /// Runs the stock client, which may fail.
    ToolOutcome TrySvn(const QStringList& arguments) const;
    /// Imports files (relative paths, with empty content) in one commit.
    void Import(const QString& repository, const QStringList& files) const;

private:
    QStringList ClientArguments(const QStringList& arguments) const;
    static ToolOutcome Try(const QString& program, const QStringList& arguments);
    static QString Run(const QString& program, const QStringList& arguments);

    QTemporaryDir m_folder;
};

} // namespace quenvolta::test
