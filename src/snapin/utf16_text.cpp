#include "snapin/utf16_text.h"

#include <QtEndian>

namespace quenvolta
{

std::optional<QString> Utf16Text(const QByteArray& bytes)
{
    if (bytes.size() < 2 || bytes.size() % 2 != 0)
        return {};
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<char16_t>(bytes.constData(), text.size(), text.data());
    if (text.indexOf(QChar(u'\0')) != text.size() - 1)
        return {};
    text.chop(1);
    return text.isValidUtf16() ? std::optional(text) : std::nullopt;
}

} // namespace quenvolta
