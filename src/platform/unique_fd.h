#pragma once

#include <unistd.h>
#include <utility>

namespace quenvolta
{

/// Owns a file descriptor and closes it; -1 is none.
class UniqueFd
{
public:
    explicit UniqueFd(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    UniqueFd(UniqueFd&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    UniqueFd& operator=(UniqueFd&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~UniqueFd()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    int Get() const { return m_descriptor; }
    bool IsOpen() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

} // namespace quenvolta
