#pragma once

namespace quenvolta
{

class IcAsyncCall;

/// Watches a call to its end.
class IcAsyncCallMonitor
{
public:
    virtual ~IcAsyncCallMonitor() = default;
    /// Returns when the call has succeeded, and throws its failure.
    virtual void Run(IcAsyncCall& call) = 0;
};

} // namespace quenvolta
