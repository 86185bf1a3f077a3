#pragma once

namespace quenvolta
{

class CModel;
class IcMessages;

/// What nodes work with; it outlives them.
struct NodeServices {
    CModel& model;
    IcMessages& messages;
};

} // namespace quenvolta
