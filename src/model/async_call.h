#pragma once

namespace quenvolta
{

/// A call that the server is carrying out. Its owner asks it again and again until it has ended.
class IcAsyncCall
{
public:
    virtual ~IcAsyncCall() = default;
    /// Asks without waiting: true once the call has succeeded, false while it runs. Throws the call's failure.
    virtual bool IsComplete() = 0;
    /// Asks the server to stop the call and returns at once; IsComplete tells what came of it.
    virtual void Cancel() = 0;
};

} // namespace quenvolta
