#pragma once

#include "platform/wbem/class_definition.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace quenvolta
{

/// The shapes that were read last, so that the objects of a list share one class definition and its bytes are read
/// once.
class ShapeCache
{
public:
    struct Entry {
        QByteArray bytes;
        /// Items that the bytes consist of.
        qsizetype items = 0;
        ClassDefinitionPtr definition;
    };

    /// The shape whose bytes stand at the front of `rest`, or null. An encoded shape is never the beginning of
    /// another one, so that equal bytes mean an equal shape. Valid until the next call.
    const Entry* Find(QByteArrayView rest);
    void Keep(Entry entry);

private:
    QList<Entry> m_entries; // the latest first
};

} // namespace quenvolta
