#include "accounts/access_level_text.h"

#include "ui/string_table.h"

#include <array>

namespace quenvolta
{

QString AccessLevelText(AccessLevel level)
{
    constexpr std::array kTexts{StringId::kNoAccess, StringId::kReadOnly, StringId::kReadWrite};
    const auto number = static_cast<std::size_t>(level);
    return number < kTexts.size() ? LoadString(kTexts[number]) : QString();
}

} // namespace quenvolta
