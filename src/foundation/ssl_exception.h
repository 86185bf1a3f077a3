#pragma once

#include "foundation/exception.h"

#include <utility>

namespace quenvolta
{

/// A failure of the cryptography library.
class SSLException final : public ExceptionKind<SSLException>
{
public:
    explicit SSLException(QString message)
        : m_message(std::move(message))
    {
    }

    QString GetMessage() const override { return m_message; }

private:
    QString m_message;
};

} // namespace quenvolta
