#pragma once

namespace quenvolta
{

/// How the web service learns who its clients are.
struct AuthenticationOptions {
    /// Else Subversion authentication.
    bool windowsAuthentication = false;
    /// These two count for Windows authentication; servers before 2.1 don't take them.
    bool basicAuthentication = true;
    bool integratedAuthentication = false;
    /// Users are named user@DOMAIN.
    bool useUpnFormat = false;

    bool operator==(const AuthenticationOptions&) const = default;
};

} // namespace quenvolta
