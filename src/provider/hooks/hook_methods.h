#pragma once

#include "provider/data_folder.h"
#include "provider/management_class.h"

namespace quenvolta
{

/// The methods of Quenvolta_Repository for hook scripts.
class HookMethods
{
public:
    /// Adds the methods to their class; `data` must outlive it.
    static void AddTo(ManagementClass& repositories, DataFolder& data);
};

} // namespace quenvolta
