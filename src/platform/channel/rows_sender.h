#pragma once

#include "platform/channel/cbor_writer.h"
#include "platform/channel/row_columns.h"
#include "platform/wbem/class_definition.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace quenvolta
{

/// Turns a long list of objects of one class into frames of Rows messages of a fair size.
class RowsSender
{
public:
    /// Takes each whole frame.
    using Sink = std::function<void(const QByteArray& frame)>;

    /// `parameter` is the output parameter whose elements follow; without one they belong to an enumeration.
    RowsSender(std::uint32_t callId, const std::optional<QString>& parameter, ClassDefinitionPtr shape, Sink sink);

    /// Adds an object by the values of its properties. False when it can't travel (a value that doesn't fit its type,
    /// or longer than a frame may be); nothing is added then.
    bool Add(const QList<Variant>& values);
    /// Sends what is left. Must be called at the end; does nothing when nothing is left.
    void Flush();

private:
    ClassDefinitionPtr m_shape;
    Sink m_sink;
    CborWriter m_head;
    RowColumns m_columns;
};

/// The parts of a Rows message before its rows.
void WriteRowsHead(CborWriter* out, std::uint32_t callId, const std::optional<QString>& parameter,
                   const ClassDefinition& shape);

} // namespace quenvolta
