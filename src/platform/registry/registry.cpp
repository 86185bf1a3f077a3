#include "platform/registry/registry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <sqlite3.h>
#include <utility>

namespace quenvolta
{

namespace
{

// How long a change waits for another process's change before it fails.
constexpr int kBusyTimeoutMs = 10000;

constexpr const char* kSchema = "CREATE TABLE IF NOT EXISTS keys (id INTEGER PRIMARY KEY, folded TEXT NOT NULL UNIQUE,"
                                " path TEXT NOT NULL);"
                                "CREATE TABLE IF NOT EXISTS key_values (key INTEGER NOT NULL REFERENCES keys (id),"
                                " folded TEXT NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL,"
                                " PRIMARY KEY (key, folded)) WITHOUT ROWID;";

Win32Error ErrorOf(int code)
{
    switch (code & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
        return ERROR_SUCCESS;
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
        return ERROR_ACCESS_DENIED;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ERROR_LOCK_VIOLATION;
    case SQLITE_FULL:
        return ERROR_DISK_FULL;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return ERROR_REGISTRY_CORRUPT;
    default:
        return ERROR_REGISTRY_IO_FAILED;
    }
}

// One prepared statement; parameters are bound in the order in which they are given.
class Statement
{
public:
    Statement(sqlite3* database, const char* text) { m_code = sqlite3_prepare_v2(database, text, -1, &m_raw, nullptr); }
    ~Statement() { sqlite3_finalize(m_raw); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& Bind(std::int64_t number)
    {
        if (m_raw)
            sqlite3_bind_int64(m_raw, ++m_bound, number);
        return *this;
    }
    Statement& Bind(const QString& text)
    {
        const QByteArray utf8 = text.toUtf8();
        if (m_raw)
            sqlite3_bind_text64(m_raw, ++m_bound, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()),
                                SQLITE_TRANSIENT, SQLITE_UTF8);
        return *this;
    }
    Statement& Bind(const QByteArray& data)
    {
        if (m_raw)
            sqlite3_bind_blob64(m_raw, ++m_bound, data.isEmpty() ? "" : data.constData(),
                                static_cast<sqlite3_uint64>(data.size()), SQLITE_TRANSIENT);
        return *this;
    }

    // True while there is a row.
    bool Step()
    {
        if (m_raw)
            m_code = sqlite3_step(m_raw);
        return m_code == SQLITE_ROW;
    }
    Win32Error Error() const { return ErrorOf(m_code); }

    std::int64_t Number(int column) const { return sqlite3_column_int64(m_raw, column); }
    QByteArray Data(int column) const
    {
        return {static_cast<const char*>(sqlite3_column_blob(m_raw, column)), sqlite3_column_bytes(m_raw, column)};
    }
    QString Text(int column) const { return QString::fromUtf8(Data(column)); }

private:
    sqlite3_stmt* m_raw = nullptr;
    int m_code = SQLITE_OK;
    int m_bound = 0;
};

} // namespace

void Registry::Closer::operator()(sqlite3* database) const
{
    sqlite3_close_v2(database);
}

Registry::Registry(QString rootName, QString fileName)
    : m_rootName(std::move(rootName))
    , m_fileName(std::move(fileName))
{
}

Registry::~Registry() = default;

Win32Error Registry::Open(bool create)
{
    if (m_database)
        return ERROR_SUCCESS;
    if (!create && !QFile::exists(m_fileName))
        return ERROR_FILE_NOT_FOUND;
    if (create && !QDir().mkpath(QFileInfo(m_fileName).absolutePath()))
        return ERROR_ACCESS_DENIED;
    sqlite3* raw = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    int code = sqlite3_open_v2(QFile::encodeName(m_fileName).constData(), &raw, flags, nullptr);
    std::unique_ptr<sqlite3, Closer> database(raw);
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(raw, kBusyTimeoutMs);
        // A file that may only be read has its tables already, or is none of ours.
        code =
            sqlite3_db_readonly(raw, "main") == 1 ? SQLITE_OK : sqlite3_exec(raw, kSchema, nullptr, nullptr, nullptr);
    }
    if (code == SQLITE_OK)
        m_database = std::move(database);
    return ErrorOf(code);
}

Win32Error Registry::BeginChanges()
{
    if (const Win32Error error = Open(true); error != ERROR_SUCCESS)
        return error;
    return ErrorOf(sqlite3_exec(m_database.get(), "BEGIN IMMEDIATE", nullptr, nullptr, nullptr));
}

Win32Error Registry::CommitChanges()
{
    return ErrorOf(sqlite3_exec(m_database.get(), "COMMIT", nullptr, nullptr, nullptr));
}

void Registry::RollBackChanges()
{
    if (m_database && sqlite3_get_autocommit(m_database.get()) == 0)
        sqlite3_exec(m_database.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

Win32Error Registry::KeyId(const QString& path, std::int64_t* id)
{
    if (const Win32Error error = Open(false); error != ERROR_SUCCESS)
        return error;
    Statement find(m_database.get(), "SELECT id FROM keys WHERE folded = ?");
    if (find.Bind(path.toCaseFolded()).Step()) {
        *id = find.Number(0);
        return ERROR_SUCCESS;
    }
    return find.Error() == ERROR_SUCCESS ? ERROR_FILE_NOT_FOUND : find.Error();
}

Win32Error Registry::CreateKey(const QString& path)
{
    if (const Win32Error error = Open(true); error != ERROR_SUCCESS)
        return error;
    Statement insert(m_database.get(), "INSERT OR IGNORE INTO keys (folded, path) VALUES (?, ?)");
    insert.Bind(path.toCaseFolded()).Bind(path).Step();
    return insert.Error();
}

Win32Error Registry::FindKey(const QString& path)
{
    std::int64_t id = 0;
    return KeyId(path, &id);
}

Win32Error Registry::DeleteTree(const QString& path)
{
    if (const Win32Error error = Open(false); error != ERROR_SUCCESS)
        return error;
    constexpr std::array kSteps{
        "DELETE FROM key_values WHERE key IN"
        " (SELECT id FROM keys WHERE folded = ?1 OR substr(folded, 1, length(?1) + 1) = ?1 || '\\')",
        "DELETE FROM keys WHERE folded = ?1 OR substr(folded, 1, length(?1) + 1) = ?1 || '\\'",
    };
    // Values first: what a failure between the steps leaves can be removed again.
    for (const char* step : kSteps) {
        Statement remove(m_database.get(), step);
        remove.Bind(path.toCaseFolded()).Step();
        if (remove.Error() != ERROR_SUCCESS)
            return remove.Error();
    }
    return sqlite3_changes(m_database.get()) == 0 ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
}

Win32Error Registry::QueryValue(const QString& path, const QString& name, RegistryValue* value)
{
    std::int64_t key = 0;
    if (const Win32Error error = KeyId(path, &key); error != ERROR_SUCCESS)
        return error;
    Statement find(m_database.get(), "SELECT type, data FROM key_values WHERE key = ? AND folded = ?");
    if (find.Bind(key).Bind(name.toCaseFolded()).Step()) {
        *value = {static_cast<RegistryType>(find.Number(0)), find.Data(1)};
        return ERROR_SUCCESS;
    }
    return find.Error() == ERROR_SUCCESS ? ERROR_FILE_NOT_FOUND : find.Error();
}

Win32Error Registry::SetValue(const QString& path, const QString& name, const RegistryValue& value)
{
    std::int64_t key = 0;
    if (const Win32Error error = KeyId(path, &key); error != ERROR_SUCCESS)
        return error;
    Statement set(m_database.get(),
                  "INSERT INTO key_values (key, folded, name, type, data) VALUES (?, ?, ?, ?, ?)"
                  " ON CONFLICT (key, folded) DO UPDATE SET type = excluded.type, data = excluded.data");
    set.Bind(key).Bind(name.toCaseFolded()).Bind(name).Bind(static_cast<std::int64_t>(value.type)).Bind(value.data);
    set.Step();
    return set.Error();
}

Win32Error Registry::DeleteValue(const QString& path, const QString& name)
{
    std::int64_t key = 0;
    if (const Win32Error error = KeyId(path, &key); error != ERROR_SUCCESS)
        return error;
    Statement remove(m_database.get(), "DELETE FROM key_values WHERE key = ? AND folded = ?");
    remove.Bind(key).Bind(name.toCaseFolded()).Step();
    if (remove.Error() != ERROR_SUCCESS)
        return remove.Error();
    return sqlite3_changes(m_database.get()) == 0 ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
}

Win32Error Registry::EnumerateValues(const QString& path, QList<NamedRegistryValue>* values)
{
    std::int64_t key = 0;
    if (const Win32Error error = KeyId(path, &key); error != ERROR_SUCCESS)
        return error;
    Statement all(m_database.get(), "SELECT name, type, data FROM key_values WHERE key = ?");
    all.Bind(key);
    while (all.Step())
        values->append({all.Text(0), {static_cast<RegistryType>(all.Number(1)), all.Data(2)}});
    return all.Error();
}

} // namespace quenvolta
