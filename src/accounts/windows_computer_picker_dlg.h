#pragma once

#include "accounts/computer_picker_dlg.h"

namespace quenvolta
{

/// Picks one computer by the name that the network knows it by, or its plain name where it has no other.
class CWindowsComputerPickerDlg final : public CComputerPickerDlg
{
public:
    using CComputerPickerDlg::CComputerPickerDlg;

protected:
    QString NameOf(const DirectoryObject& computer) const override
    {
        return computer.dnsHostName.isEmpty() ? computer.name : computer.dnsHostName;
    }
};

} // namespace quenvolta
