#pragma once

#include <QStringList>

namespace quenvolta
{

class CModel;

/// The names of Windows accounts as they are shown, DOMAIN\NAME, asked of the managed computer in one call. An account
/// that it doesn't know, or can't be asked for, is shown by its identifier.
QStringList WindowsAccountNames(CModel& model, const QStringList& sids);

} // namespace quenvolta
