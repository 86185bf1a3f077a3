#pragma once

#include "foundation/exception.h"
#include "foundation/format.h"

namespace quenvolta
{

/// A failure that is its text.
class SimpleException final : public ExceptionKind<SimpleException>
{
public:
    template <typename... Arguments>
    explicit SimpleException(FormatString<Arguments...> format, const Arguments&... arguments)
        : m_message(Format<Arguments...>(format, arguments...))
    {
    }

    /// With a text that is ready to show, such as one of the string table.
    static SimpleException FromText(const QString& message)
    {
        SimpleException exception(u"");
        exception.m_message = message;
        return exception;
    }

    QString GetMessage() const override { return m_message; }

private:
    QString m_message;
};

} // namespace quenvolta
