#pragma once

#include "provider/unique_fd.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quenvolta
{

/// New contents for files of one folder, which replace the old ones together. Everything is written, synced and read
/// back before the first file is replaced, so that a full disk or a fault of it changes nothing. Whoever uses it holds
/// the folder's lock. Failures are ProviderErrors.
class StagedFiles
{
public:
    explicit StagedFiles(const QString& folder);
    /// Removes what was staged and not committed.
    ~StagedFiles();
    Q_DISABLE_COPY_MOVE(StagedFiles)

    /// Writes the file beside its old one, readable by this account alone.
    void Stage(const QString& name, const QByteArray& content);

    /// Stages it unless the file holds just this content already. True when it was staged.
    bool StageIfNew(const QString& name, const QByteArray& content);

    /// Replaces the files, each durably, in the order in which they were staged.
    void Commit();

    /// Removes what a process that is no more left beside the file.
    static void RemoveLeftover(const QString& folder, const QString& name);

private:
    QString m_folderPath;
    UniqueFd m_folder;
    QStringList m_names;
};

} // namespace quenvolta
