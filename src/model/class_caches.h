#pragma once

#include "wmi/wmi_class_cache.h"

namespace quenvolta
{

/// The server's classes whose definitions the console needs, each read on first use.
struct ClassCaches {
    explicit ClassCaches(WMIConnection& connection);

    WMIClassCache user;
    WMIClassCache group;
    WMIClassCache everyone;
    WMIClassCache windowsAccount;
    WMIClassCache permissionEntry;
    WMIClassCache repositoryEntry;
    WMIClassCache repository;
    WMIClassCache service;
    WMIClassCache qdfsService;
    WMIClassCache securityDescriptor;
    WMIClassCache activity;
};

} // namespace quenvolta
