#pragma once

#include "wmi/wmi_class.h"

namespace quenvolta
{

class WMIConnection;

/// A class definition that is read on first use and kept; a failed reading is tried again the next time.
class WMIClassCache final : public IcWMIClassRef
{
public:
    /// The connection must outlive the cache and stay where it is.
    WMIClassCache(QString className, WMIConnection& connection);

    const WMIClass& GetClass() override;
    const QString& ClassName() const { return m_className; }

private:
    QString m_className;
    WMIConnection* m_connection;
    WMIClass m_cached;
    bool m_loaded = false;
};

} // namespace quenvolta
