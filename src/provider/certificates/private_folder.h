#pragma once

#include "provider/certificates/secret_text.h"
#include "provider/unique_fd.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>
#include <QString>

#include <optional>

namespace quenvolta
{

/// A folder with files for the server's own account alone: what is made in it has the mode 0600 (0700 for folders) from
/// its first moment, and nothing is opened through a link unless that is said. Failures are ProviderErrors that name
/// the file.
class PrivateFolder
{
public:
    /// The folder, made when it is missing (its parent must be there).
    static PrivateFolder Make(const QString& path);
    /// Nothing when there is no such folder.
    static std::optional<PrivateFolder> Find(const QString& path);
    PrivateFolder MakeFolder(const QByteArray& name) const;
    std::optional<PrivateFolder> FindFolder(const QByteArray& name) const;

    /// The names in the folder, hidden ones too, in no order.
    QByteArrayList Names() const;
    /// When the file was last written, in nanoseconds; 0 when it is missing.
    qint64 WrittenAt(const QByteArray& name) const;

    enum class Links { Refused, Followed };
    /// Nothing when there is no such file, or a link leads to none.
    std::optional<SecretText> Read(const QByteArray& name, Links links = Links::Refused) const;
    /// Makes the file, brings it to the disk and reads it back. There must be none of this name.
    void Write(const QByteArray& name, QByteArrayView text) const;
    /// Makes `name` a link to `target`, whatever it was before, in one step.
    void PointTo(const QByteArray& name, const QByteArray& target) const;
    /// Where the link leads; empty when it is none.
    QByteArray TargetOf(const QByteArray& name) const;
    void Move(const QByteArray& from, const QByteArray& to) const;
    /// Removes the file, the link, or the folder with the files in it. What is missing or can't be removed is passed
    /// over.
    void Remove(const QByteArray& name) const noexcept;
    /// Brings what was made, moved and removed here to the disk.
    void Sync() const;

private:
    PrivateFolder(QString path, UniqueFd folder);
    static std::optional<PrivateFolder> Open(const QString& path);
    [[noreturn]] void Refuse(bool writing, const QByteArray& name, int error) const;
    QString PathOf(const QByteArray& name) const;

    QString m_path;
    UniqueFd m_folder;
};

} // namespace quenvolta
