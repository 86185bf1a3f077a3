#pragma once

#include "platform/registry/registry.h"

#include <QByteArray>

#include <optional>

class QFileDevice;

namespace quenvolta
{

/// One registry value as it was, or that there was none, in a file that the caller opened. A file is a sequence of
/// records: a tag, the length of the data, the data; all numbers have 32 bits, the lowest byte first.
class RegistryJournal
{
public:
    explicit RegistryJournal(QFileDevice* file)
        : m_file(file)
    {
    }

    /// Adds the value and brings the file to the disk. ComException.
    void Write(const std::optional<RegistryValue>& value) const;
    /// The value that stands where the file is read. SimpleException for what is no journal, ComException when it ends
    /// too early, Win32Exception without an open file.
    std::optional<RegistryValue> Read() const;

private:
    std::uint32_t ReadNumber() const;
    std::uint32_t ReadField() const;
    QByteArray ReadBytes(qint64 size) const;

    QFileDevice* m_file;
};

} // namespace quenvolta
