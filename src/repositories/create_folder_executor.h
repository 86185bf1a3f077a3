#pragma once

#include <QString>

class QWidget;

namespace quenvolta
{

/// What a dialog that creates folders does.
class IcCreateFolderExecutor
{
public:
    virtual ~IcCreateFolderExecutor() = default;
    /// True when the dialog may close. A name that can't be used is told over the owner; failures are exceptions.
    virtual bool Execute(const QString& name, const QString& message, QWidget* owner) = 0;
    /// The proposed commit message.
    virtual QString GetDefaultMessage(const QString& name) const = 0;
};

} // namespace quenvolta
