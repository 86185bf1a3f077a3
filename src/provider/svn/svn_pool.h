#pragma once

#include "provider/svn/svn_library.h"

#include <QtGlobal>

#include <svn_pools.h>

namespace quenvolta
{

/// The memory of one operation of the Subversion library. A pool and those below it belong to one thread at a time.
class SvnPool
{
public:
    /// A pool of an operation of its own.
    SvnPool()
        : m_pool(svn_pool_create(SvnLibrary::OperationPools()))
    {
    }
    /// A pool below `parent`, for what one step of a loop needs.
    explicit SvnPool(SvnPool& parent)
        : m_pool(svn_pool_create(parent.m_pool))
    {
    }
    ~SvnPool() { svn_pool_destroy(m_pool); }
    Q_DISABLE_COPY_MOVE(SvnPool)

    apr_pool_t* Get() const { return m_pool; }
    void Clear() { svn_pool_clear(m_pool); }

private:
    apr_pool_t* m_pool = nullptr;
};

} // namespace quenvolta
