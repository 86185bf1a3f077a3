#include "host/row_delegate.h"

namespace quenvolta
{

namespace
{

constexpr int kAir = 6;
// More than any screen shows; the cost of laying out a text grows with its length.
constexpr qsizetype kLongestText = 2048;

} // namespace

QString RowDelegate::displayText(const QVariant& value, const QLocale& /*locale*/) const
{
    QString text = value.toString().left(kLongestText);
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return text;
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, kAir);
}

} // namespace quenvolta
