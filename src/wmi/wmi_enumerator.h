#pragma once

#include "platform/wbem/wbem_services.h"
#include "wmi/wmi_object.h"

#include <QList>

namespace quenvolta
{

/// The instances of a class, one after another. Objects are fetched in chunks behind it.
class WMIEnumerator
{
public:
    explicit WMIEnumerator(EnumWbemClassObjectPtr handle);

    /// The next object, waiting without a limit; false at the end. ComException when the enumeration fails.
    bool Next(WMIObject* object);

private:
    EnumWbemClassObjectPtr m_handle;
    QList<WbemObjectPtr> m_fetched;
    qsizetype m_position = 0;
    bool m_ended = false;
};

} // namespace quenvolta
