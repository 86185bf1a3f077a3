#pragma once

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quenvolta::test
{

/// A program that listens on a port of the loopback while it lives.
class PortHolder
{
public:
    PortHolder()
        : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* generic = static_cast<sockaddr*>(static_cast<void*>(&address));
        EXPECT_EQ(::bind(m_socket, generic, size), 0);
        EXPECT_EQ(::listen(m_socket, 1), 0);
        ::getsockname(m_socket, generic, &size);
        m_port = ntohs(address.sin_port);
    }
    ~PortHolder() { ::close(m_socket); }
    PortHolder(const PortHolder&) = delete;
    PortHolder& operator=(const PortHolder&) = delete;

    int Port() const { return m_port; }
    /// A port that nobody held just now.
    static int Free() { return PortHolder().Port(); }

private:
    int m_socket;
    int m_port = 0;
};

} // namespace quenvolta::test
