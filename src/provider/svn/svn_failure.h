#pragma once

#include <QString>
#include <QStringView>

#include <svn_types.h>

namespace quenvolta
{

/// Throws the ProviderError that tells of `error` and its causes, and clears it. `what` is the sentence that says what
/// could not be done.
[[noreturn]] void ThrowSvnError(svn_error_t* error, const QString& what);

/// Throws as ThrowSvnError when `error` is one; `object` replaces %1 in `format` (only then, so that success is cheap).
inline void CheckSvn(svn_error_t* error, QStringView format, QStringView object = {});

/// Throws the ProviderError that tells of the system's error number `error`.
[[noreturn]] void ThrowSystemError(int error, const QString& what);

void CheckSvn(svn_error_t* error, QStringView format, QStringView object)
{
    if (error != nullptr) [[unlikely]]
        ThrowSvnError(error, object.isNull() ? format.toString() : format.toString().arg(object));
}

} // namespace quenvolta
