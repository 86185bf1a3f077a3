#pragma once

#include <QString>

namespace quenvolta
{

/// What the progress dialog of a long call says.
struct ProgressTexts {
    QString title = {};
    QString text = {};
    QString detail = {};
    bool cancellable = true;
    /// Shown instead of `text` and `detail` once the call is being cancelled.
    QString cancellingText = {};
    QString cancellingDetail = {};
};

} // namespace quenvolta
