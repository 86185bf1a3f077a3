#pragma once

#include "provider/method_call.h"

#include <QString>
#include <QStringList>

namespace quenvolta
{

/// Lists of Windows accounts as they travel: objects of Quenvolta_WindowsAccount, each with a security identifier.
namespace accountlist
{

/// The identifiers of an input parameter, in its order and as they were given, each checked. ProviderError
/// (WBEM_E_INVALID_PARAMETER) for an element that is no Windows account or has no valid identifier, and for more than
/// 10,000 of them.
QStringList FromParameter(const MethodCall& call, QStringView name);

/// Sets an output parameter to the accounts of these identifiers.
void Return(MethodCall& call, const QString& name, const QStringList& identifiers);

} // namespace accountlist

} // namespace quenvolta
