#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <variant>

namespace quenvolta
{

class IWbemClassObject;
using WbemObjectPtr = std::shared_ptr<IWbemClassObject>;

/// A property's or parameter's value; `std::monostate` is null.
using Variant = std::variant<std::monostate, bool, std::int32_t, std::uint32_t, QString, WbemObjectPtr, QStringList,
                             QList<WbemObjectPtr>>;

/// True when the value is null.
inline bool IsNullVariant(const Variant& value)
{
    return std::holds_alternative<std::monostate>(value);
}

/// The types that the management classes use. The numbers are the management standard's.
enum class CimType : std::uint16_t {
    Sint32 = 3,
    String = 8,
    Boolean = 11,
    Object = 13,
    Uint32 = 19,
    Datetime = 101,
    StringArray = 0x2000 | 8,
    ObjectArray = 0x2000 | 13,
};

} // namespace quenvolta
