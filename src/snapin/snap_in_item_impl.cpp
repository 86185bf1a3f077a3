#include "snapin/snap_in_item_impl.h"

#include <QtEndian>

#include <array>
#include <cstring>

namespace quenvolta
{

QByteArray ClipboardText(const QString& text)
{
    QByteArray bytes((text.size() + 1) * 2, '\0');
    qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data());
    return bytes;
}

QByteArray ClipboardGuid(const QUuid& id)
{
    QByteArray bytes(16, '\0');
    qToLittleEndian(id.data1, bytes.data());
    qToLittleEndian(id.data2, bytes.data() + 4);
    qToLittleEndian(id.data3, bytes.data() + 6);
    std::memcpy(bytes.data() + 8, id.data4, sizeof id.data4);
    return bytes;
}

} // namespace quenvolta
