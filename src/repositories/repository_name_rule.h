#pragma once

#include <QStringView>

namespace quenvolta
{

/// True for a name of letters, digits, "-", "." and "_" that neither begins nor ends with ".".
bool IsValidRepositoryName(QStringView name);

} // namespace quenvolta
