#pragma once

#include "accounts/object_picker_dlg.h"

#include <QStringList>

namespace quenvolta
{

/// Picks security principals: users, groups and computers' accounts.
class CSidObjectPickerDlg : public CObjectPickerDlg
{
public:
    CSidObjectPickerDlg(QWidget* parent, DirectoryOpener open);

    /// Runs the picker. False when it was cancelled; failures are exceptions.
    bool Show();
    /// The string form of the picked objects' security identifiers.
    QStringList Sids() const;

protected:
    CSidObjectPickerDlg(QWidget* parent, DirectoryOpener open, const QList<PickerScope>& scopes);
};

} // namespace quenvolta
