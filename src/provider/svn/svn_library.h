#pragma once

#include <apr_pools.h>

namespace quenvolta
{

/// The Subversion library of this process.
class SvnLibrary
{
public:
    /// Starts the library once, before anything else touches it; later calls cost nothing. Throws ProviderError.
    static void Initialize();

    /// The pool that those of single operations are made below, by any thread. What they give back is kept for the
    /// next ones up to a bound, because the system takes longer to hand out memory and to take it than a large folder
    /// takes to be looked through. Starts the library.
    static apr_pool_t* OperationPools();
};

} // namespace quenvolta
