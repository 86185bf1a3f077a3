#include "provider/svn/svn_library.h"

#include "provider/provider_error.h"
#include "provider/svn/repository_texts.h"
#include "provider/svn/svn_failure.h"

#include <apr_general.h>
#include <svn_cache_config.h>
#include <svn_dso.h>
#include <svn_fs.h>
#include <svn_pools.h>
#include <svn_utf.h>

namespace quenvolta
{

namespace
{

// With the library's default of 16 MB, folders of more than 50,000 entries become many times slower.
constexpr apr_uint64_t kCacheBytes = 64U * 1024U * 1024U;

// Enough for the entries of a folder of 30,000.
constexpr apr_size_t kKeptBytes = 32U * 1024U * 1024U;

bool Start()
{
    if (apr_initialize() != APR_SUCCESS)
        throw ProviderError(WBEM_E_FAILED, texts::kCannotStartLibrary.toString());

    // A broken assertion inside the library must be an error of one request, not the end of the provider.
    svn_error_set_malfunction_handler(svn_error_raise_on_malfunction);
    CheckSvn(svn_dso_initialize2(), texts::kCannotStartLibrary);

    // Lives as long as the process: the library keeps what all file systems share in it.
    apr_pool_t* pool = svn_pool_create(nullptr);
    // File names are UTF-8 whatever locale a login shell or a service manager hands to the provider.
    svn_utf_initialize2(TRUE, pool);

    svn_cache_config_t cache = *svn_cache_config_get();
    cache.cache_size = kCacheBytes;
    cache.single_threaded = FALSE;
    svn_cache_config_set(&cache);

    CheckSvn(svn_fs_initialize(pool), texts::kCannotStartLibrary);
    return true;
}

} // namespace

void SvnLibrary::Initialize()
{
    [[maybe_unused]] static const bool started = Start();
}

apr_pool_t* SvnLibrary::OperationPools()
{
    Initialize();
    static apr_pool_t* const pools = [] {
        apr_allocator_t* const allocator = svn_pool_create_allocator(TRUE);
        apr_allocator_max_free_set(allocator, kKeptBytes);
        return apr_allocator_owner_get(allocator);
    }();
    return pools;
}

} // namespace quenvolta
