#include "ui/guard.h"

#include "foundation/simple_exception.h"

#include <QDebug>

#include <exception>

namespace quenvolta
{

namespace
{

void ShowCurrentException(IcMessages& messages)
{
    try {
        throw;
    } catch (const Exception& exception) {
        messages.ShowError(exception);
    } catch (const std::exception& exception) {
        messages.ShowError(
            SimpleException::FromText(LoadString(StringId::kUnknownFailure, QString::fromUtf8(exception.what()))));
    }
}

} // namespace

void ReportCurrentException(IcMessages& messages) noexcept
{
    try {
        ShowCurrentException(messages);
    } catch (const Exception& exception) {
        qCritical().noquote() << exception.GetMessage(); // the failure could not even be shown
    } catch (const std::exception& exception) {
        qCritical() << exception.what();
    }
}

} // namespace quenvolta
