#include "provider/standard/account_database.h"

#include "foundation/sid.h"
#include "provider/provider_error.h"
#include "provider/standard/standard_texts.h"

#include <QScopeGuard>

#include <cerrno>
#include <grp.h>
#include <pwd.h>
#include <vector>

namespace quenvolta
{

namespace
{

constexpr std::size_t kFirstBuffer = 4096;
// The line of a very large group; what is longer is a fault.
constexpr std::size_t kLargestBuffer = std::size_t{64} * 1024 * 1024;

DatabaseAccount ToAccount(const passwd& entry)
{
    // The first of the fields that the comment holds.
    const QString comment = QString::fromLocal8Bit(entry.pw_gecos);
    return {QString::fromLocal8Bit(entry.pw_name), SidToString({kUnixAuthority, {kUnixUserKind, entry.pw_uid}}),
            comment.section(u',', 0, 0).trimmed()};
}

DatabaseAccount ToAccount(const group& entry)
{
    return {QString::fromLocal8Bit(entry.gr_name), SidToString({kUnixAuthority, {kUnixGroupKind, entry.gr_gid}}),
            QString()};
}

// One entry that `read` finds, with a buffer that grows as long as it is too small. Nothing when there is none.
template <typename Entry, typename Read>
std::optional<DatabaseAccount> ReadEntry(std::vector<char>& buffer, const Read& read)
{
    for (;;) {
        Entry entry{};
        Entry* found = nullptr;
        const int error = read(&entry, buffer.data(), buffer.size(), &found);
        if (found)
            return ToAccount(*found);
        if (error == ERANGE && buffer.size() < kLargestBuffer)
            buffer.resize(buffer.size() * 2);
        else if (error == 0 || error == ENOENT || error == ESRCH)
            return std::nullopt;
        else if (error != EINTR)
            throw ProviderError(WBEM_E_FAILED, standardtexts::kCannotReadAccounts.arg(qt_error_string(error)));
    }
}

template <typename Entry, typename Read>
void VisitEntries(const AccountDatabase::Visitor& visitor, const Read& read)
{
    std::vector<char> buffer(kFirstBuffer);
    while (const std::optional<DatabaseAccount> account = ReadEntry<Entry>(buffer, read))
        visitor(*account);
}

// The system's own functions end a name at a null character.
bool CanBeName(const QString& name)
{
    return !name.isEmpty() && !name.contains(QChar(u'\0'));
}

template <typename Entry, typename Read>
std::optional<DatabaseAccount> FindEntry(const QString& name, const Read& byName)
{
    if (!CanBeName(name))
        return std::nullopt;
    const QByteArray local = name.toLocal8Bit();
    std::vector<char> buffer(kFirstBuffer);
    return ReadEntry<Entry>(buffer, [&](Entry* entry, char* memory, std::size_t size, Entry** found) {
        return byName(local.constData(), entry, memory, size, found);
    });
}

template <typename Entry, typename Read>
std::optional<DatabaseAccount> FindNumbered(std::uint32_t number, const Read& byNumber)
{
    std::vector<char> buffer(kFirstBuffer);
    return ReadEntry<Entry>(buffer, [&](Entry* entry, char* memory, std::size_t size, Entry** found) {
        return byNumber(number, entry, memory, size, found);
    });
}

} // namespace

void UserDatabase::Visit(const Visitor& visitor) const
{
    ::setpwent();
    const auto end = qScopeGuard([] { ::endpwent(); });
    VisitEntries<passwd>(visitor, ::getpwent_r);
}

std::optional<DatabaseAccount> UserDatabase::Find(const QString& name) const
{
    return FindEntry<passwd>(name, ::getpwnam_r);
}

std::optional<DatabaseAccount> UserDatabase::FindNumber(std::uint32_t number) const
{
    return FindNumbered<passwd>(number, ::getpwuid_r);
}

void GroupDatabase::Visit(const Visitor& visitor) const
{
    ::setgrent();
    const auto end = qScopeGuard([] { ::endgrent(); });
    VisitEntries<group>(visitor, ::getgrent_r);
}

std::optional<DatabaseAccount> GroupDatabase::Find(const QString& name) const
{
    return FindEntry<group>(name, ::getgrnam_r);
}

std::optional<DatabaseAccount> GroupDatabase::FindNumber(std::uint32_t number) const
{
    return FindNumbered<group>(number, ::getgrgid_r);
}

} // namespace quenvolta
