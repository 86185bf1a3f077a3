#include "wmi/variant_conversion.h"

#include <cmath>
#include <concepts>
#include <limits>
#include <type_traits>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// A value as a number: true is all bits set, a text is read and rounded to the nearest whole number.
HRESULT ToNumber(const Variant& value, double* number)
{
    return std::visit(
        [number]<typename Value>(const Value& held) -> HRESULT {
            if constexpr (std::same_as<Value, bool>) {
                *number = held ? -1 : 0;
                return S_OK;
            } else if constexpr (std::integral<Value>) {
                *number = held;
                return S_OK;
            } else if constexpr (std::same_as<Value, QString>) {
                bool read = false;
                *number = std::nearbyint(held.trimmed().toDouble(&read));
                return read && std::isfinite(*number) ? S_OK : DISP_E_TYPEMISMATCH;
            } else {
                return DISP_E_TYPEMISMATCH;
            }
        },
        value);
}

template <typename Integer>
HRESULT ToInteger(const Variant& value, Integer* converted)
{
    if (const Integer* same = std::get_if<Integer>(&value)) {
        *converted = *same;
        return S_OK;
    }
    if (const bool* flag = std::get_if<bool>(&value)) {
        *converted = *flag ? static_cast<Integer>(-1) : Integer{0};
        return S_OK;
    }
    double number = 0;
    if (const HRESULT code = ToNumber(value, &number); Failed(code))
        return code;
    if (number < std::numeric_limits<Integer>::min() || number > std::numeric_limits<Integer>::max())
        return DISP_E_OVERFLOW;
    *converted = static_cast<Integer>(number);
    return S_OK;
}

} // namespace

HRESULT ToBool(const Variant& value, bool* converted)
{
    if (const QString* text = std::get_if<QString>(&value)) {
        const bool yes = text->compare("true"_L1, Qt::CaseInsensitive) == 0;
        if (yes || text->compare("false"_L1, Qt::CaseInsensitive) == 0) {
            *converted = yes;
            return S_OK;
        }
    }
    double number = 0;
    const HRESULT code = ToNumber(value, &number);
    if (Succeeded(code))
        *converted = number != 0;
    return code;
}

HRESULT ToUInt32(const Variant& value, std::uint32_t* converted)
{
    return ToInteger(value, converted);
}

HRESULT ToInt32(const Variant& value, std::int32_t* converted)
{
    return ToInteger(value, converted);
}

} // namespace quenvolta
