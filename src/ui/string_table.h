#pragma once

#include "ui/message_format.h"

#include <QString>

namespace quenvolta
{

/// The numbers of the texts of resources/strings.def.
namespace StringId
{
#define STRING(name, number, text) inline constexpr int name = number;
#include "resources/strings.def"
#undef STRING
} // namespace StringId

/// A text of the string table; a number that it doesn't hold is a SimpleException.
QString LoadString(int id);

/// True when the string table holds a text of the number.
bool HasString(int id);

/// A text of the string table with its inserts (texts and integers) filled.
template <typename... Inserts>
requires(sizeof...(Inserts) > 0) QString LoadString(int id, const Inserts&... inserts)
{
    return FormatMessage(LoadString(id), {detail::ToFormatArgument(inserts)...});
}

} // namespace quenvolta
