#pragma once

namespace quenvolta
{

class CModel;
class DialogTable;
class IcMessages;
class IcPreferences;
class IcShell;

/// What nodes work with; it outlives them.
struct NodeServices {
    CModel& model;
    IcMessages& messages;
    IcPreferences& preferences;
    const IcShell& shell;
    const DialogTable& dialogs;
};

} // namespace quenvolta
