#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quenvolta
{

/// The text of bytes that hold it in UTF-16 (little-endian) with one zero behind it; nothing when they don't.
std::optional<QString> Utf16Text(const QByteArray& bytes);

} // namespace quenvolta
