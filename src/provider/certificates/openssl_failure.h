#pragma once

#include <QString>

namespace quenvolta
{

/// What the library has noted of its last failures, one a line. They are forgotten then.
QString TakeOpenSslErrors();

/// Throws the ProviderError (WBEM_E_FAILED) of a failure in the library, with the library's words as details.
[[noreturn]] void ThrowOpenSslFailure(const QString& description);

/// As ThrowOpenSslFailure when `succeeded` is false.
inline void RequireOpenSsl(bool succeeded, const QString& description)
{
    if (!succeeded)
        ThrowOpenSslFailure(description);
}

} // namespace quenvolta
