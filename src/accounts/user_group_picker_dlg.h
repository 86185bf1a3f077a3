#pragma once

#include "accounts/sid_object_picker_dlg.h"

namespace quenvolta
{

/// Picks users and groups, on demand computers too.
class CUserGroupPickerDlg final : public CSidObjectPickerDlg
{
public:
    enum class Computers : bool { Without, With };

    /// Users and groups are the default filter; computers are offered in further ones.
    CUserGroupPickerDlg(QWidget* parent, DirectoryOpener open, Computers computers);
};

} // namespace quenvolta
