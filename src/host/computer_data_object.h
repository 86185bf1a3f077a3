#pragma once

#include "platform/mmc/data_object.h"

#include <QString>

namespace quenvolta
{

/// The data object of the node of a computer.
class ComputerDataObject final : public IDataObject
{
public:
    ComputerDataObject(QString computer, QString displayName)
        : m_computer(std::move(computer))
        , m_displayName(std::move(displayName))
    {
    }

    HRESULT GetData(const QString& format, QByteArray* data) const override;

private:
    QString m_computer;
    QString m_displayName;
};

} // namespace quenvolta
