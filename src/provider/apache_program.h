#pragma once

#include <QString>

namespace quenvolta
{

/// The web server's program on this computer.
class ApacheProgram
{
public:
    /// Its path; empty when it isn't installed.
    static QString Find();

    /// Its version, such as "2.4.62"; empty when it isn't installed or doesn't tell.
    static QString ReadVersion();
};

} // namespace quenvolta
