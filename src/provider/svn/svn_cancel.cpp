#include "provider/svn/svn_cancel.h"

#include "provider/provider_error.h"
#include "provider/svn/repository_texts.h"

#include <svn_error.h>
#include <svn_error_codes.h>

namespace quenvolta
{

svn_error_t* SvnCancelCallback(void* check)
{
    const auto& isCancelled = *static_cast<const CancelCheck*>(check);
    return isCancelled && isCancelled() ? svn_error_create(SVN_ERR_CANCELLED, nullptr, nullptr) : nullptr;
}

void ThrowIfCancelled(const CancelCheck& check)
{
    if (check && check())
        throw ProviderError(WBEM_E_CALL_CANCELLED, texts::kCancelled.toString());
}

} // namespace quenvolta
