#include "provider/accounts/system_accounts.h"

#include "foundation/exception.h"
#include "foundation/sid.h"

#include <cerrno>
#include <grp.h>
#include <pwd.h>
#include <vector>

namespace quenvolta
{

namespace
{

constexpr std::uint64_t kSystemAuthority = 22;
constexpr std::uint32_t kUsers = 1;
constexpr std::uint32_t kGroups = 2;
constexpr std::size_t kFirstBuffer = 4096;
constexpr std::size_t kLargestBuffer = 16U << 20U;

// Calls `look` with larger buffers until the entry fits; null when there is none.
template <typename Entry, typename Look>
Entry* LookUp(Entry& entry, std::vector<char>& buffer, Look look)
{
    Entry* found = nullptr;
    for (std::size_t size = kFirstBuffer; size <= kLargestBuffer; size *= 4) {
        buffer.resize(size);
        const int error = look(&entry, buffer.data(), buffer.size(), &found);
        if (error != ERANGE && error != EINTR)
            break;
    }
    return found;
}

} // namespace

std::optional<SystemAccountId> SystemAccountId::Parse(const QString& text)
{
    Sid sid;
    try {
        sid = StringToSid(text);
    } catch (const Exception&) {
        return std::nullopt;
    }
    if (sid.authority != kSystemAuthority || sid.subAuthorities.size() != 2 ||
        (sid.subAuthorities[0] != kUsers && sid.subAuthorities[0] != kGroups))
        return std::nullopt;
    return SystemAccountId{sid.subAuthorities[0] == kGroups, sid.subAuthorities[1]};
}

std::optional<QString> TrueSystemAccounts::UserName(std::uint32_t uid) const
{
    passwd entry{};
    std::vector<char> buffer;
    const passwd* found = LookUp(entry, buffer, [uid](passwd* into, char* data, std::size_t size, passwd** result) {
        return ::getpwuid_r(uid, into, data, size, result);
    });
    return found ? std::optional(QString::fromUtf8(found->pw_name)) : std::nullopt;
}

QHash<std::uint32_t, QStringList> TrueSystemAccounts::GroupMembers(const QList<std::uint32_t>& gids) const
{
    QHash<std::uint32_t, QStringList> members;
    for (const std::uint32_t gid : gids) {
        group entry{};
        std::vector<char> buffer;
        const group* found = LookUp(entry, buffer, [gid](group* into, char* data, std::size_t size, group** result) {
            return ::getgrgid_r(gid, into, data, size, result);
        });
        if (!found)
            continue;
        QStringList& names = members[gid];
        for (char** name = found->gr_mem; *name != nullptr; ++name)
            names.append(QString::fromUtf8(*name));
    }
    if (members.isEmpty())
        return members;
    ::setpwent();
    while (const passwd* user = ::getpwent()) {
        if (const auto found = members.find(user->pw_gid); found != members.end())
            found->append(QString::fromUtf8(user->pw_name));
    }
    ::endpwent();
    for (QStringList& names : members)
        names.removeDuplicates();
    return members;
}

} // namespace quenvolta
