#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quenvolta
{

/// A disk that can be made full, for a process of its own: a file system in memory where the system lets this process
/// mount one (in a name space of its own, for which nobody has to be root), else a limit on the length of every file.
class SmallDisk
{
public:
    /// Mounts it on an empty folder. To be called once, by a process that ends after the test.
    explicit SmallDisk(const QString& folder)
        : m_filler(folder + QStringLiteral("/filler"))
        , m_isMounted(Mount(QFile::encodeName(folder)))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, SIG_IGN);
    }

    bool IsMounted() const { return m_isMounted; }

    /// Leaves room for so many pages more.
    void LeavePages(int pages) const
    {
        const long page = ::sysconf(_SC_PAGESIZE);
        if (!m_isMounted) {
            const rlimit tight{static_cast<rlim_t>(pages * page), m_limit.rlim_max};
            ::setrlimit(RLIMIT_FSIZE, &tight);
            return;
        }
        // The filler gets all there is, and gives back what shall be left.
        Free();
        const QByteArray path = QFile::encodeName(m_filler);
        const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        const QByteArray block(page, 'x');
        long blocks = 0;
        while (::write(file, block.constData(), static_cast<std::size_t>(block.size())) == block.size())
            ++blocks;
        if (::ftruncate(file, qMax(0L, blocks - pages) * page) != 0)
            ::_exit(1);
        ::close(file);
    }

    void Free() const
    {
        ::setrlimit(RLIMIT_FSIZE, &m_limit);
        ::unlink(QFile::encodeName(m_filler).constData());
    }

private:
    static bool Write(const char* path, const QByteArray& text)
    {
        const int file = ::open(path, O_WRONLY | O_CLOEXEC);
        const bool isDone = ::write(file, text.constData(), static_cast<std::size_t>(text.size())) == text.size();
        ::close(file);
        return isDone;
    }

    static bool Mount(const QByteArray& folder)
    {
        const auto same = [](unsigned id) { return QByteArray::number(id) + ' ' + QByteArray::number(id) + " 1"; };
        const QByteArray users = same(::geteuid());
        const QByteArray groups = same(::getegid());
        return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && Write("/proc/self/setgroups", "deny") &&
               Write("/proc/self/uid_map", users) && Write("/proc/self/gid_map", groups) &&
               ::mount("none", folder.constData(), "tmpfs", 0, "size=8m,mode=0755") == 0 && DropRights();
    }

    // From here on the rights of files count, for root too.
    static bool DropRights()
    {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> none{};
        return ::syscall(SYS_capset, &header, none.data()) == 0;
    }

    QString m_filler;
    bool m_isMounted;
    rlimit m_limit{};
};

} // namespace quenvolta
