#include "snapin/notification_boundary.h"

#include "snapin/snap_in_data_object_impl.h"
#include "ui/guard.h"

namespace quenvolta
{

HRESULT NotifyItem(IcMessages& messages, IConsole* console, const DataObjectPtr& object,
                   const MMCNotification& notification)
{
    const auto* ours = dynamic_cast<const CSnapInDataObjectImpl*>(object.get());
    if (ours == nullptr || console == nullptr)
        return E_UNEXPECTED;
    HRESULT result = E_FAIL;
    Guarded(messages, [&] { result = ours->Item().Notify(*console, notification); });
    return result;
}

} // namespace quenvolta
