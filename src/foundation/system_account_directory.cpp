#include "foundation/system_account_directory.h"

#include "foundation/win32_error.h"

#include <QSysInfo>

#include <cerrno>
#include <cstddef>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <vector>

namespace quenvolta
{

namespace
{

constexpr std::uint64_t kUnixAuthority = 22;
constexpr std::uint32_t kUserKind = 1;
constexpr std::uint32_t kGroupKind = 2;

constexpr std::size_t kFirstBuffer = 1024;
constexpr std::size_t kLargestBuffer = std::size_t{64} * 1024 * 1024;

// Asks the system's account database with a buffer that grows as long as it is too small; `read` is getpwuid_r or
// getgrgid_r and gives its entry's name.
template <typename Entry, typename Id, typename Read>
std::int32_t ReadName(Id id, char* Entry::*nameMember, const Read& read, QString* name)
{
    for (std::size_t size = kFirstBuffer; size <= kLargestBuffer; size *= 2) {
        std::vector<char> buffer(size);
        Entry entry{};
        Entry* found = nullptr;
        const int error = read(id, &entry, buffer.data(), buffer.size(), &found);
        if (found) {
            *name = QString::fromLocal8Bit(found->*nameMember);
            return 0;
        }
        if (error != ERANGE && error != EINTR)
            return ERROR_NONE_MAPPED;
    }
    return ERROR_NONE_MAPPED;
}

} // namespace

std::int32_t SystemAccountDirectory::LookupSid(const Sid& sid, const QString& computerName, AccountName* name) const
{
    const QString host = QSysInfo::machineHostName();
    if (!computerName.isEmpty() && computerName.compare(host, Qt::CaseInsensitive) != 0)
        return RPC_S_SERVER_UNAVAILABLE_ERROR;
    if (sid.authority != kUnixAuthority || sid.subAuthorities.size() != 2)
        return ERROR_NONE_MAPPED;
    const std::uint32_t id = sid.subAuthorities[1];
    std::int32_t error = ERROR_NONE_MAPPED;
    QString account;
    if (sid.subAuthorities[0] == kUserKind)
        error = ReadName(id, &passwd::pw_name, getpwuid_r, &account);
    else if (sid.subAuthorities[0] == kGroupKind)
        error = ReadName(id, &group::gr_name, getgrgid_r, &account);
    if (error == 0)
        *name = {account, host};
    return error;
}

} // namespace quenvolta
