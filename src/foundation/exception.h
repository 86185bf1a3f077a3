#pragma once

#include <QString>

#include <memory>

namespace quenvolta
{

/// The root of every failure of the program. Thrown by value, caught by reference.
class Exception
{
public:
    virtual ~Exception() = default;
    /// The text to show.
    virtual QString GetMessage() const = 0;
    /// An owned copy of the same kind, to keep a failure beyond the handler that caught it.
    virtual std::unique_ptr<Exception> Clone() const = 0;
    /// Throws a copy of the same kind.
    [[noreturn]] virtual void Throw() const = 0;

protected:
    Exception() = default;
    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;
};

/// Gives a kind of exception its Clone and Throw: class Kind : public ExceptionKind<Kind, Base>.
template <typename Kind, typename Base = Exception>
class ExceptionKind : public Base
{
public:
    using Base::Base;

    std::unique_ptr<Exception> Clone() const override
    {
        return std::make_unique<Kind>(static_cast<const Kind&>(*this));
    }
    [[noreturn]] void Throw() const override { throw static_cast<const Kind&>(*this); }
};

} // namespace quenvolta
