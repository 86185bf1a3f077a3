#pragma once

#include "provider/row_sink.h"

#include <QHash>
#include <QList>

namespace quenvolta
{

/// Keeps what a call hands out.
class CollectedRows final : public RowSink
{
public:
    void AddInstance(const InstanceRow& row) override { instances.append(row.ToObject()); }
    void AddElement(const QString& parameter, const InstanceRow& row) override
    {
        elements[parameter].append(row.ToObject());
    }

    QList<WbemObjectPtr> instances;
    QHash<QString, QList<WbemObjectPtr>> elements;
};

} // namespace quenvolta
