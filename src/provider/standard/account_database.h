#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace quenvolta
{

/// Identifiers are S-1-22-<kind>-<number>.
inline constexpr std::uint64_t kUnixAuthority = 22;
inline constexpr std::uint32_t kUnixUserKind = 1;
inline constexpr std::uint32_t kUnixGroupKind = 2;

/// One account of the server's system.
struct DatabaseAccount {
    QString name;
    /// The security identifier that stands for its number.
    QString sid;
    /// The user's full name; groups have none.
    QString fullName;
};

/// The users or the groups of the server's system, wherever the system gets them from. Failures to read are
/// ProviderErrors.
class AccountDatabase
{
public:
    using Visitor = std::function<void(const DatabaseAccount&)>;

    virtual ~AccountDatabase() = default;
    /// Hands over each account as soon as it was read; whatever the visitor throws ends it.
    virtual void Visit(const Visitor& visitor) const = 0;
    virtual std::optional<DatabaseAccount> Find(const QString& name) const = 0;
    /// By the number that the identifier stands for.
    virtual std::optional<DatabaseAccount> FindNumber(std::uint32_t number) const = 0;
};

/// Users are S-1-22-1-<number>.
class UserDatabase final : public AccountDatabase
{
public:
    void Visit(const Visitor& visitor) const override;
    std::optional<DatabaseAccount> Find(const QString& name) const override;
    std::optional<DatabaseAccount> FindNumber(std::uint32_t number) const override;
};

/// Groups are S-1-22-2-<number>.
class GroupDatabase final : public AccountDatabase
{
public:
    void Visit(const Visitor& visitor) const override;
    std::optional<DatabaseAccount> Find(const QString& name) const override;
    std::optional<DatabaseAccount> FindNumber(std::uint32_t number) const override;
};

} // namespace quenvolta
