#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>

struct sqlite3;

namespace quenvolta
{

/// The result of a registry call: 0 or a Win32 error.
using Win32Error = std::int32_t;

inline constexpr Win32Error ERROR_SUCCESS = 0;
inline constexpr Win32Error ERROR_FILE_NOT_FOUND = 2;
inline constexpr Win32Error ERROR_ACCESS_DENIED = 5;
inline constexpr Win32Error ERROR_LOCK_VIOLATION = 33;
inline constexpr Win32Error ERROR_DISK_FULL = 112;
inline constexpr Win32Error ERROR_REGISTRY_CORRUPT = 1015;
inline constexpr Win32Error ERROR_REGISTRY_IO_FAILED = 1016;

/// The types of a value; the numbers are the platform's.
enum class RegistryType : std::uint32_t {
    String = 1,
    Binary = 3,
    Dword = 4,
    MultiString = 7,
    Qword = 11,
};

/// A value as the platform keeps it: texts in UTF-16 little-endian with their terminating zeros, numbers
/// little-endian.
struct RegistryValue {
    RegistryType type = RegistryType::Binary;
    QByteArray data;

    static RegistryValue FromString(const QString& text);
    static RegistryValue FromStringList(const QStringList& list);
    static RegistryValue FromDword(std::uint32_t number);
    static RegistryValue FromQword(std::uint64_t number);

    /// The value in the form that its type has; nothing when it is of another type or its data doesn't fit.
    std::optional<QString> ToString() const;
    std::optional<QStringList> ToStringList() const;
    std::optional<std::uint32_t> ToDword() const;
    std::optional<std::uint64_t> ToQword() const;

    bool operator==(const RegistryValue&) const = default;
};

/// A value with its name as it was written.
struct NamedRegistryValue {
    QString name;
    RegistryValue value;
};

/// A typed store of keys and values, one root in one file. Key paths (with backslashes) and value names are
/// found without regard to case. Every change is a transaction of its own, so two processes may use one file.
/// The file is opened at the first use; reading never creates it.
class Registry
{
public:
    /// `rootName` is what messages call it, such as "HKEY_CURRENT_USER".
    Registry(QString rootName, QString fileName);
    ~Registry();
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    const QString& RootName() const { return m_rootName; }

    /// Makes the key (and the file with its folder) when it is missing.
    Win32Error CreateKey(const QString& path);
    /// ERROR_FILE_NOT_FOUND when there is no such key.
    Win32Error FindKey(const QString& path);
    /// Removes the key with its values and all keys below it; ERROR_FILE_NOT_FOUND when there is none.
    Win32Error DeleteTree(const QString& path);
    /// ERROR_FILE_NOT_FOUND when the key or the value is missing.
    Win32Error QueryValue(const QString& path, const QString& name, RegistryValue* value);
    /// ERROR_FILE_NOT_FOUND when the key is missing; the value is added or replaced.
    Win32Error SetValue(const QString& path, const QString& name, const RegistryValue& value);
    Win32Error DeleteValue(const QString& path, const QString& name);
    /// All values of the key, in no particular order.
    Win32Error EnumerateValues(const QString& path, QList<NamedRegistryValue>* values);

    /// Changes made from here on are there together once they are committed, or not at all. Other processes wait, or
    /// fail with ERROR_LOCK_VIOLATION. The file is made when it is missing.
    Win32Error BeginChanges();
    Win32Error CommitChanges();
    void RollBackChanges();

private:
    struct Closer {
        void operator()(sqlite3* database) const;
    };

    Win32Error Open(bool create);
    Win32Error KeyId(const QString& path, std::int64_t* id);

    QString m_rootName;
    QString m_fileName;
    std::unique_ptr<sqlite3, Closer> m_database;
};

} // namespace quenvolta
