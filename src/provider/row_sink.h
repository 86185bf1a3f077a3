#pragma once

#include "provider/instance_row.h"

#include <QString>

namespace quenvolta
{

/// Takes objects one after another and hands them on in batches.
class RowSink
{
public:
    virtual ~RowSink() = default;
    /// An instance of an enumeration.
    virtual void AddInstance(const InstanceRow& row) = 0;
    /// The next element of a method's output parameter that is an array of objects.
    virtual void AddElement(const QString& parameter, const InstanceRow& row) = 0;
};

} // namespace quenvolta
