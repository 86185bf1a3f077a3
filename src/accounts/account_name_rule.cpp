#include "accounts/account_name_rule.h"

#include <algorithm>

namespace quenvolta
{

namespace
{

bool IsAllowed(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           QStringView(u"-._").contains(c);
}

} // namespace

bool IsValidAccountName(QStringView name)
{
    return !name.isEmpty() && std::ranges::all_of(name, &IsAllowed);
}

} // namespace quenvolta
