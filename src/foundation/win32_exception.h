#pragma once

#include "foundation/com_exception.h"
#include "foundation/win32_error.h"

#include <cstdint>

namespace quenvolta
{

/// A failure of the operating system, by its Win32 error.
class Win32Exception final : public ExceptionKind<Win32Exception, ComException>
{
public:
    explicit Win32Exception(std::int32_t win32Error)
        : ExceptionKind(HResultFromWin32(win32Error))
    {
    }

    template <typename... Arguments>
    Win32Exception(std::int32_t win32Error, FormatString<Arguments...> format, const Arguments&... arguments)
        : ExceptionKind(HResultFromWin32(win32Error), ErrorInfoPtr{}, format, arguments...)
    {
    }
};

} // namespace quenvolta
