#pragma once

#include "platform/channel/cbor_writer.h"
#include "platform/wbem/class_definition.h"

#include <span>

namespace quenvolta
{

/// Writes what objects are made of. A value that doesn't fit its type, or an object of another implementation than
/// WbemObject, is a fault of the writer.
class ObjectWriter
{
public:
    explicit ObjectWriter(CborWriter* out)
        : m_out(out)
    {
    }

    /// A class without its methods.
    void Shape(const ClassDefinition& definition);
    void Value(CimType type, const Variant& value);
    /// One value for each property of `shape`.
    void Values(const ClassDefinition& shape, std::span<const Variant> values);
    /// An instance or a class's definition; null for an empty pointer.
    void Object(const WbemObjectPtr& object);

private:
    void ShapeFields(const ClassDefinition& definition);
    void Properties(const ClassDefinition& definition);
    void Class(const ClassDefinition& definition);
    void Texts(const QStringList& texts);

    CborWriter* m_out;
};

} // namespace quenvolta
