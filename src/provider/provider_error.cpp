#include "provider/provider_error.h"

namespace quenvolta
{

ProviderError::ProviderError(HRESULT code, const QString& description, const QString& summary, const QString& details,
                             qint32 probableReason)
    : m_code(code)
    , m_description(description)
    , m_summary(summary)
    , m_details(details)
    , m_probableReason(probableReason)
    , m_what(description.toUtf8())
{
}

} // namespace quenvolta
