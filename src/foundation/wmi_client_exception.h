#pragma once

#include "foundation/com_exception.h"

#include <cstdint>
#include <utility>

namespace quenvolta
{

/// What the server's extended error object says.
struct ExtendedErrorInfo {
    QString description;
    QString summary;
    QString details;
    /// 1 to 5 name a reason that the console has guidance for.
    std::int32_t probableReason = 0;
};

/// A failure that the server explained.
class WMIClientException final : public ExceptionKind<WMIClientException, ComException>
{
public:
    WMIClientException(HRESULT code, ErrorInfoPtr errorInformation, ExtendedErrorInfo extended)
        : ExceptionKind(code, std::move(errorInformation))
        , m_extended(std::move(extended))
    {
    }

    QString GetMessage() const override { return m_extended.description; }

    const QString& Description() const { return m_extended.description; }
    const QString& Summary() const { return m_extended.summary; }
    const QString& Details() const { return m_extended.details; }
    std::int32_t ProbableReason() const { return m_extended.probableReason; }

private:
    ExtendedErrorInfo m_extended;
};

} // namespace quenvolta
