#pragma once

#include <QStringView>

namespace quenvolta
{

/// What may name a user or a group, and what may be a password. Names are compared exactly, as the web service compares
/// them: case matters, and so does the form in which an accented letter is composed.
class AccountNames
{
public:
    /// Refuses (ProviderError, WBEM_E_INVALID_PARAMETER) what has no place of its own in a line of the password file
    /// or the permission rules.
    static void CheckUser(QStringView name);
    static void CheckGroup(QStringView name);

    /// True when the name can stand in the permission rules as it is.
    static bool IsPlain(QStringView name);

    /// Refuses a password that would not be kept whole.
    static void CheckPassword(QStringView user, QStringView password);
};

} // namespace quenvolta
