#pragma once

#include "provider/management_class.h"

namespace quenvolta
{

/// Quenvolta_Activity: ends what runs. Activities aren't listed.
class ActivityClass final : public ManagementClass
{
public:
    ActivityClass();
};

} // namespace quenvolta
