#pragma once

#include <QSize>
#include <QWidget>

namespace quenvolta
{

inline constexpr QSize kPageIconSize{48, 48};

/// Gives a page's title its font.
inline void SetTitleFont(QWidget& title)
{
    QFont font = title.font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.3);
    title.setFont(font);
}

} // namespace quenvolta
