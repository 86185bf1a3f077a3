#pragma once

#include "foundation/exception.h"

#include <utility>

namespace quenvolta
{

/// The managed computer has no server. Thrown by the model alone.
class ServerNotInstalledException final : public ExceptionKind<ServerNotInstalledException>
{
public:
    /// `computerName` is empty for the local computer.
    explicit ServerNotInstalledException(QString computerName)
        : m_computerName(std::move(computerName))
    {
    }

    QString GetMessage() const override;
    const QString& ComputerName() const { return m_computerName; }

private:
    QString m_computerName;
};

} // namespace quenvolta
