#pragma once

#include "platform/channel/cbor_reader.h"
#include "platform/channel/shape_cache.h"
#include "platform/wbem/class_definition.h"

namespace quenvolta
{

/// Reads what ObjectWriter writes. A value that doesn't fit its type is a fault of the reader.
class ObjectReader
{
public:
    ObjectReader(CborReader* in, ShapeCache* shapes)
        : m_in(in)
        , m_shapes(shapes)
    {
    }

    /// Never null.
    ClassDefinitionPtr Shape();
    Variant Value(CimType type);
    /// The values of objects of the shape, row behind row, from their number and their columns. A shape without
    /// properties has no rows.
    QList<Variant> Rows(const ClassDefinition& shape);
    /// An instance, a class's definition, or empty for null.
    WbemObjectPtr OptionalObject();
    /// The error object of a Result; never null when no fault was found.
    WbemObjectPtr ErrorObject();
    QStringList Texts();

private:
    QList<Variant> Values(const ClassDefinition& shape);
    /// Reads the values of one property into `values`, `step` places apart.
    void Column(CimType type, qsizetype rows, Variant* values, qsizetype step);
    void ColumnOfTexts(qsizetype rows, Variant* values, qsizetype step);
    using MakeInstance = WbemObjectPtr (*)(ClassDefinitionPtr, QList<Variant>);

    WbemObjectPtr Object(MakeInstance makeInstance);
    WbemObjectPtr Instance();
    void ShapeFields(ClassDefinition* definition);
    QList<PropertyDefinition> Properties();
    ClassDefinitionPtr Signature();
    ClassDefinitionPtr Class();

    CborReader* m_in;
    ShapeCache* m_shapes;
};

} // namespace quenvolta
