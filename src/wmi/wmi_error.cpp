#include "wmi/wmi_error.h"

#include "foundation/wmi_client_exception.h"
#include "wmi/wmi_object.h"

#include <bit>

namespace quenvolta
{

using namespace Qt::StringLiterals;

ErrorInfoPtr TakeErrorInformation()
{
    ErrorInfoPtr information;
    GetErrorInfo(&information);
    return information;
}

void RaiseWmiError(HRESULT code)
{
    if (Succeeded(code))
        return;
    const ErrorInfoPtr information = TakeErrorInformation();
    const WMIObject error(std::dynamic_pointer_cast<IWbemClassObject>(information));
    if (error.IsEmpty() || !error.InheritsFrom(u"Quenvolta_ExtendedError"_s))
        throw ComException(code, information);
    throw WMIClientException(code, information,
                             {error.GetString(u"Description"_s), error.GetString(u"Summary"_s),
                              error.GetString(u"Details"_s),
                              std::bit_cast<std::int32_t>(error.GetUInt32(u"ProbableReason"_s))});
}

} // namespace quenvolta
