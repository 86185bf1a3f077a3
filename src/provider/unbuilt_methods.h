#pragma once

#include <QString>

namespace quenvolta
{

/// True when unbuilt_methods.def names the method.
bool IsUnbuilt(QStringView className, QStringView method);

/// Throws the ProviderError of a method that the provider doesn't carry out.
[[noreturn]] void RefuseUnbuilt(const QString& className, const QString& method);

} // namespace quenvolta
