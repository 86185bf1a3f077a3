#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace quenvolta
{

/// The number that a security identifier of the system's accounts stands for: S-1-22-1-<uid>, S-1-22-2-<gid>.
struct SystemAccountId {
    bool isGroup = false;
    std::uint32_t number = 0;

    /// Nothing for any other identifier.
    static std::optional<SystemAccountId> Parse(const QString& sid);
};

/// The accounts of the computer that the server runs on, as far as permission rules need them.
class SystemAccounts
{
public:
    virtual ~SystemAccounts() = default;
    /// The name that the user signs in with; nothing when there is no such user.
    virtual std::optional<QString> UserName(std::uint32_t uid) const = 0;
    /// The users of several groups, by group number: those that the group lists, and those whose own group it is. A
    /// group that doesn't exist has none.
    virtual QHash<std::uint32_t, QStringList> GroupMembers(const QList<std::uint32_t>& gids) const = 0;
};

/// Those that the system tells of.
class TrueSystemAccounts final : public SystemAccounts
{
public:
    std::optional<QString> UserName(std::uint32_t uid) const override;
    QHash<std::uint32_t, QStringList> GroupMembers(const QList<std::uint32_t>& gids) const override;
};

} // namespace quenvolta
