#pragma once

#include "model/hook_info.h"

#include <QList>
#include <QString>

namespace quenvolta
{

/// What a person reads about a hook.
struct HookDescription {
    HookKind kind = HookKind::PostCommit;
    /// The heading below which the hook is listed.
    QString group = {};
    QString name = {};
    /// When Subversion runs the hook, and with which arguments; several lines.
    QString description = {};
};

/// All hooks in the order in which they are listed.
const QList<HookDescription>& HookDescriptions();

/// The description of a hook.
const HookDescription& DescriptionOf(HookKind kind);

} // namespace quenvolta
