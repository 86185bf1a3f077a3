#include "wmi/wmi_class_cache.h"

#include "wmi/wmi_connection.h"

#include <utility>

namespace quenvolta
{

WMIClassCache::WMIClassCache(QString className, WMIConnection& connection)
    : m_className(std::move(className))
    , m_connection(&connection)
{
}

const WMIClass& WMIClassCache::GetClass()
{
    if (!m_loaded) {
        m_cached = m_connection->GetClass(m_className);
        m_loaded = true;
    }
    return m_cached;
}

} // namespace quenvolta
