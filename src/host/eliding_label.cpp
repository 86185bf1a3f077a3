#include "host/eliding_label.h"

#include <QPainter>
#include <QStyle>

namespace quenvolta
{

namespace
{

// More than any screen shows; the cost of cutting a text grows with its length.
constexpr qsizetype kLongestText = 4096;

} // namespace

ElidingLabel::ElidingLabel(QWidget* parent)
    : QFrame(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidingLabel::SetText(const QString& text)
{
    m_text = text.simplified();
    setAccessibleDescription(m_text);
    if (m_text.size() > kLongestText)
        m_text = m_text.left(kLongestText / 2) + QChar(u'\u2026') + m_text.right(kLongestText / 2);
    updateGeometry();
    update();
}

QSize ElidingLabel::sizeHint() const
{
    // A text without room needs a pixel more than it is wide.
    return {fontMetrics().horizontalAdvance(m_text) + 1, fontMetrics().height()};
}

QSize ElidingLabel::minimumSizeHint() const
{
    return {0, fontMetrics().height()};
}

void ElidingLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(m_text, Qt::ElideMiddle, width());
    style()->drawItemText(&painter, rect(), Qt::AlignVCenter | Qt::AlignLeading, palette(), isEnabled(), shown,
                          foregroundRole());
}

} // namespace quenvolta
