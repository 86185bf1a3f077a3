#pragma once

#include <QString>

class QWidget;

namespace quenvolta
{

class CModel;
class IcMessages;

/// Compares a slave repository with its master, with a progress dialog over `parent`, and tells that they agree.
/// Whatever else comes of it is the call's exception.
void CheckConsistency(QWidget* parent, CModel& model, IcMessages& messages, const QString& repository);

} // namespace quenvolta
