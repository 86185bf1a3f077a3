#pragma once

#include <QString>

#include <sys/types.h>
#include <vector>

namespace quenvolta
{

/// The account that owns the server's data and that its web service works as.
///
/// httpd refuses to serve as root, and what root's libraries and hooks write could not be changed by httpd. So a
/// provider that root starts works as the owner of the data folder: everything that it makes, and every process that it
/// starts, belongs to that account without further care. It keeps a way back, for the few things that only root can do
/// (Elevation); a program that it starts has no such way.
class ServerAccount
{
public:
    /// Makes this process work as the owner of the data folder while this object lives. Root makes a missing folder for
    /// the system's account for web services. Does nothing for a process that isn't root's, for a folder that belongs
    /// to root, and for a missing one that the web service's account could not reach: root then works for itself,
    /// without a web service. ProviderError when the system refuses.
    explicit ServerAccount(const QString& dataFolder);
    ~ServerAccount();
    Q_DISABLE_COPY_MOVE(ServerAccount)

    /// True when this process works as root.
    static bool IsRoot();

    /// The name of an account, or its number.
    static QString NameOf(uid_t account);
    /// The name of the account that a web service would have on this system; empty when there is none.
    static QString WebAccount();

    /// Root's power for the current thread while it lives, when root started this process; else nothing.
    class Elevation
    {
    public:
        Elevation();
        ~Elevation();
        Q_DISABLE_COPY_MOVE(Elevation)

    private:
        uid_t m_account;
    };

    /// For a child before it becomes a program: lets the program bind ports below 1024, if this process may. Safe
    /// between fork and exec.
    static void AllowLowPorts();

private:
    bool m_entered = false;
    gid_t m_formerGroup = 0;
    std::vector<gid_t> m_formerGroups;
};

} // namespace quenvolta
