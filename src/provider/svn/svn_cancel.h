#pragma once

#include <functional>
#include <svn_types.h>

namespace quenvolta
{

/// Asked now and then whether the operation shall end; empty never ends it. It must not throw.
using CancelCheck = std::function<bool()>;

/// The library's cancel callback (`svn_cancel_func_t`); its baton is the address of a CancelCheck.
svn_error_t* SvnCancelCallback(void* check);

/// Throws ProviderError (WBEM_E_CALL_CANCELLED) when `check` says so.
void ThrowIfCancelled(const CancelCheck& check);

} // namespace quenvolta
