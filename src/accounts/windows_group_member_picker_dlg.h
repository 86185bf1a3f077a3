#pragma once

#include "accounts/sid_object_picker_dlg.h"

namespace quenvolta
{

/// Picks members for one of the system's groups.
class CWindowsGroupMemberPickerDlg final : public CSidObjectPickerDlg
{
public:
    CWindowsGroupMemberPickerDlg(QWidget* parent, DirectoryOpener open);
};

} // namespace quenvolta
