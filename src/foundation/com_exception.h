#pragma once

#include "foundation/exception.h"
#include "foundation/format.h"
#include "platform/hresult.h"
#include "platform/wbem/error_info.h"

#include <utility>

namespace quenvolta
{

/// A failure that has a numeric code. Its text is the error information's description, else the code's own text;
/// a context ("Cannot get property 'Name'") stands before it, parted by a colon and a line feed.
class ComException : public ExceptionKind<ComException>
{
public:
    explicit ComException(HRESULT code, ErrorInfoPtr errorInformation = {})
        : m_code(code)
        , m_errorInformation(std::move(errorInformation))
    {
    }

    template <typename... Arguments>
    ComException(HRESULT code, ErrorInfoPtr errorInformation, FormatString<Arguments...> format,
                 const Arguments&... arguments)
        : m_code(code)
        , m_errorInformation(std::move(errorInformation))
        , m_context(Format<Arguments...>(format, arguments...))
    {
    }

    QString GetMessage() const override;

    HRESULT Code() const { return m_code; }
    /// Null when the failure's words are its code's alone.
    const ErrorInfoPtr& ErrorInformation() const { return m_errorInformation; }
    const QString& Context() const { return m_context; }

private:
    HRESULT m_code;
    ErrorInfoPtr m_errorInformation;
    QString m_context;
};

/// Throws a bare ComException when the code is a failure.
void CheckResult(HRESULT code);

} // namespace quenvolta
