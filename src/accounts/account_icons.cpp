#include "accounts/account_icons.h"

#include "ui/icons.h"

namespace quenvolta
{

namespace
{

constexpr int kUserIcon = 212;
constexpr int kMarkedUserIcon = 213;
constexpr int kGroupIcon = 214;
constexpr int kMarkedGroupIcon = 215;

} // namespace

AccountIcons::AccountIcons()
    : m_groups{IconResource(kGroupIcon), IconResource(kMarkedGroupIcon)}
    , m_users{IconResource(kUserIcon), IconResource(kMarkedUserIcon)}
{
}

const QIcon& AccountIcons::IconOf(AccountKind kind, bool isExplicit) const
{
    const bool isGroup = kind == AccountKind::Everyone || kind == AccountKind::Group;
    const Pair& pair = isGroup ? m_groups : m_users;
    return isExplicit ? pair.marked : pair.plain;
}

} // namespace quenvolta
