#include "ui/string_table.h"

#include "foundation/simple_exception.h"

#include <QStringView>

#include <algorithm>
#include <array>

namespace quenvolta
{

namespace
{

struct Row {
    int id;
    QStringView text;
};

constexpr std::array kRows{
#define STRING(name, number, text) Row{number, u"" text},
#include "resources/strings.def"
#undef STRING
};

static_assert(std::ranges::adjacent_find(kRows, std::ranges::greater_equal(), &Row::id) == kRows.end(),
              "the texts are ordered by number, each number once");

} // namespace

bool HasString(int id)
{
    return std::ranges::binary_search(kRows, id, {}, &Row::id);
}

QString LoadString(int id)
{
    const auto row = std::ranges::lower_bound(kRows, id, {}, &Row::id);
    if (row == kRows.end() || row->id != id)
        throw SimpleException(u"The text %d is missing", id);
    return row->text.toString();
}

} // namespace quenvolta
