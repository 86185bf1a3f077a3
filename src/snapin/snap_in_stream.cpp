#include "snapin/snap_in_stream.h"

#include "foundation/simple_exception.h"
#include "snapin/snap_in_item_impl.h"
#include "snapin/utf16_text.h"
#include "ui/string_table.h"

#include <QtEndian>

#include <cstdint>

namespace quenvolta
{

namespace
{

constexpr std::uint32_t kVersion = 1;
constexpr qsizetype kHeaderSize = 8;
constexpr std::uint32_t kShortestName = 2; // the zero alone
constexpr std::uint32_t kLongestName = 1024 * 1024;

template <typename... Inserts>
[[noreturn]] void Refuse(int text, const Inserts&... inserts)
{
    throw SimpleException::FromText(LoadString(text, inserts...));
}

} // namespace

QByteArray WriteSnapInStream(const QString& computer)
{
    const QByteArray name = computer.isEmpty() ? QByteArray() : ClipboardText(computer);
    QByteArray stream(kHeaderSize, '\0');
    qToLittleEndian(kVersion, stream.data());
    qToLittleEndian(static_cast<std::uint32_t>(name.size()), stream.data() + 4);
    return stream + name;
}

QString ReadSnapInStream(const QByteArray& stream)
{
    if (stream.size() < kHeaderSize)
        Refuse(StringId::kStreamTooShort);
    const auto version = qFromLittleEndian<std::uint32_t>(stream.constData());
    if (version != kVersion)
        Refuse(StringId::kStreamVersion, static_cast<qint64>(version));
    const auto length = qFromLittleEndian<std::uint32_t>(stream.constData() + 4);
    if (length == 0 && stream.size() == kHeaderSize)
        return {};
    if (length < kShortestName || length % 2 != 0 || length > kLongestName || stream.size() - kHeaderSize != length)
        Refuse(StringId::kStreamLength, static_cast<qint64>(length));
    const std::optional<QString> name = Utf16Text(stream.sliced(kHeaderSize));
    if (!name)
        Refuse(StringId::kStreamTerminator);
    return *name;
}

} // namespace quenvolta
