#include "foundation/com_exception.h"

#include "foundation/error_text.h"

namespace quenvolta
{

QString ComException::GetMessage() const
{
    QString detail;
    if (!m_errorInformation || Failed(m_errorInformation->GetDescription(&detail)) || detail.isEmpty())
        detail = ErrorTextFromHResult(m_code);
    return m_context.isEmpty() ? detail : m_context + QStringLiteral(":\n") + detail;
}

void CheckResult(HRESULT code)
{
    if (Failed(code))
        throw ComException(code);
}

} // namespace quenvolta
