#pragma once

#include <QByteArray>
#include <QString>

namespace quenvolta
{

/// A new content for a file, written beside it and put in its place only when it is wanted. Only the server's account
/// can read it. Whoever uses it holds the lock under which the file is changed.
class StagedFile
{
public:
    /// Writes the content to `target`.new and brings it to the disk. ProviderError.
    StagedFile(const QString& target, const QByteArray& content);
    /// Where the new content of a file waits.
    static QString PathFor(const QString& target) { return target + QStringLiteral(".new"); }
    /// Removes what wasn't installed.
    ~StagedFile();
    StagedFile(StagedFile&& other) noexcept;
    StagedFile& operator=(StagedFile&&) = delete;

    const QString& Path() const { return m_path; }

    /// Replaces the target. ProviderError; the target is as before then.
    void Install();

private:
    QString m_target;
    QString m_path;
};

} // namespace quenvolta
