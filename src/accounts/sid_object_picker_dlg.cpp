#include "accounts/sid_object_picker_dlg.h"

#include "foundation/sid.h"
#include "ui/string_table.h"

#include <utility>

namespace quenvolta
{

using Kind = DirectoryObjectKind;

CSidObjectPickerDlg::CSidObjectPickerDlg(QWidget* parent, DirectoryOpener open)
    : CSidObjectPickerDlg(parent, std::move(open),
                          {{StringId::kScopePrincipals, {Kind::User, Kind::Group, Kind::Computer}}})
{
}

CSidObjectPickerDlg::CSidObjectPickerDlg(QWidget* parent, DirectoryOpener open, const QList<PickerScope>& scopes)
    : CObjectPickerDlg(parent, std::move(open), StringId::kPickAccounts, scopes, Selection::Several)
{
}

bool CSidObjectPickerDlg::Show()
{
    return Pick();
}

QStringList CSidObjectPickerDlg::Sids() const
{
    QStringList sids;
    for (const DirectoryObject& object : Picked())
        sids.append(SidToString(StringToSid(object.sid))); // what the server sent is checked here
    return sids;
}

} // namespace quenvolta
