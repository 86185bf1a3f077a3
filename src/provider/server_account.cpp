#include "provider/server_account.h"

#include "provider/provider_error.h"
#include "provider/provider_texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstring>
#include <grp.h>
#include <linux/capability.h>
#include <optional>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct Account {
    QByteArray name;
    uid_t user = 0;
    gid_t group = 0;
};

constexpr uid_t kRoot = 0;
constexpr auto kUnchanged = static_cast<uid_t>(-1);

// `look` is getpwnam_r or getpwuid_r with its key.
template <typename Look>
std::optional<Account> LookUp(const Look& look)
{
    constexpr std::size_t kLongestEntry = 16 * 1024;
    std::vector<char> buffer(kLongestEntry);
    passwd entry{};
    passwd* found = nullptr;
    if (look(&entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return std::nullopt;
    return Account{found->pw_name, found->pw_uid, found->pw_gid};
}

std::optional<Account> Find(const char* name)
{
    return LookUp([name](auto... rest) { return ::getpwnam_r(name, rest...); });
}

std::optional<Account> Find(uid_t user)
{
    return LookUp([user](auto... rest) { return ::getpwuid_r(user, rest...); });
}

// The names that systems give the account of their web services; one made for this server comes first.
std::optional<Account> FindWebAccount()
{
    for (const char* name : {"quenvolta", "www-data", "apache", "http", "wwwrun", "daemon"}) {
        if (std::optional<Account> account = Find(name); account && account->user != kRoot)
            return account;
    }
    return std::nullopt;
}

[[noreturn]] void Refuse(const QString& dataFolder, const QByteArray& account)
{
    throw ProviderError(WBEM_E_FAILED, replies::kCannotBecomeAccount.arg(QString::fromUtf8(account), dataFolder,
                                                                         qt_error_string(errno)));
}

// True when everybody may enter all folders above the path.
bool CanBeReached(const QString& path)
{
    for (QString folder = QFileInfo(path).absolutePath();; folder = QFileInfo(folder).absolutePath()) {
        struct stat status {
        };
        if (::stat(QFile::encodeName(folder).constData(), &status) == 0 && (status.st_mode & S_IXOTH) == 0)
            return false;
        if (folder == "/"_L1)
            return true;
    }
}

void MakeFor(const Account& account, const QString& dataFolder)
{
    const QByteArray path = QFile::encodeName(dataFolder);
    if (!QDir().mkpath(QFileInfo(dataFolder).absolutePath()) || ::mkdir(path.constData(), S_IRWXU) != 0 ||
        ::lchown(path.constData(), account.user, account.group) != 0)
        Refuse(dataFolder, account.name);
}

} // namespace

ServerAccount::ServerAccount(const QString& dataFolder)
{
    if (!IsRoot())
        return;
    struct stat status {
    };
    std::optional<Account> account;
    if (::stat(QFile::encodeName(dataFolder).constData(), &status) == 0) {
        if (status.st_uid == kRoot)
            return;
        account = Find(status.st_uid);
        if (!account)
            account = Account{QByteArray::number(status.st_uid), status.st_uid, status.st_gid};
    } else {
        account = FindWebAccount();
        if (!account || !CanBeReached(dataFolder))
            return;
        MakeFor(*account, dataFolder);
    }
    m_formerGroup = ::getegid();
    m_formerGroups.resize(static_cast<std::size_t>(qMax(0, ::getgroups(0, nullptr))));
    ::getgroups(static_cast<int>(m_formerGroups.size()), m_formerGroups.data());
    m_entered = true;
    // The real user changes too: a shell that runs a hook would go back to it. The saved one is the way back; a program
    // that is started loses it.
    if (::initgroups(account->name.constData(), account->group) != 0 ||
        ::setresgid(account->group, account->group, account->group) != 0 ||
        ::setresuid(account->user, account->user, kRoot) != 0)
        Refuse(dataFolder, account->name);
}

ServerAccount::~ServerAccount()
{
    // What looks at a process at its end, such as a check for leaks, isn't let in as long as there is a way back.
    if (m_entered &&
        (::setresuid(kRoot, kRoot, kRoot) != 0 || ::setresgid(m_formerGroup, m_formerGroup, m_formerGroup) != 0 ||
         ::setgroups(m_formerGroups.size(), m_formerGroups.data()) != 0))
        qWarning("cannot leave the server's account");
}

bool ServerAccount::IsRoot()
{
    return ::geteuid() == kRoot;
}

QString ServerAccount::NameOf(uid_t account)
{
    const std::optional<Account> found = Find(account);
    return found ? QString::fromUtf8(found->name) : QString::number(account);
}

QString ServerAccount::WebAccount()
{
    const std::optional<Account> account = FindWebAccount();
    return account ? QString::fromUtf8(account->name) : QString();
}

ServerAccount::Elevation::Elevation()
    : m_account(::geteuid())
{
    // The system's own call, since the library's would change the other threads too.
    ::syscall(SYS_setresuid, kUnchanged, kRoot, kUnchanged);
}

ServerAccount::Elevation::~Elevation()
{
    ::syscall(SYS_setresuid, kUnchanged, m_account, kUnchanged);
}

void ServerAccount::AllowLowPorts()
{
    constexpr std::uint32_t kBind = 1U << CAP_NET_BIND_SERVICE;
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> sets{};
    sets[0] = {kBind, kBind, kBind};
    const uid_t account = ::geteuid();
    if (account == kRoot)
        return;
    ::prctl(PR_SET_KEEPCAPS, 1, 0, 0, 0);
    ::syscall(SYS_setresuid, account, account, account);
    if (::syscall(SYS_capset, &header, sets.data()) == 0)
        ::prctl(PR_CAP_AMBIENT, PR_CAP_AMBIENT_RAISE, CAP_NET_BIND_SERVICE, 0, 0);
}

} // namespace quenvolta
