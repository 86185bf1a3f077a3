#pragma once

#include "model/permission_entry.h"
#include "model/tree_position.h"

#include <QString>
#include <QStringList>

#include <memory>

class QWidget;

namespace quenvolta
{

class CAddPermissionDlg;
class CUserGroupPickerDlg;

/// Whose permissions the permission editor shows, and where it writes them. Failures are exceptions.
class IcSecurityPageHost
{
public:
    virtual ~IcSecurityPageHost() = default;
    /// The managed computer; empty for the local one.
    virtual QString GetServerComputerName() = 0;
    virtual bool IsWindowsAuthentication() = 0;
    /// The edited object; two empty texts for the whole server.
    virtual TreePosition GetPath() = 0;
    /// What is set on exactly that object.
    virtual PermissionList GetPermissions(const TreePosition& path) = 0;
    /// Replaces what is set on the edited object.
    virtual void SetPermissions(const PermissionList& entries) = 0;
    virtual std::unique_ptr<CAddPermissionDlg> CreateAccountChooser(QWidget* parent) = 0;
    virtual std::unique_ptr<CUserGroupPickerDlg> CreateWindowsPicker(QWidget* parent) = 0;
    /// How Windows accounts are shown, in the order of their identifiers; an unknown one is its identifier.
    virtual QStringList GetWindowsAccountNames(const QStringList& sids) = 0;
};

} // namespace quenvolta
