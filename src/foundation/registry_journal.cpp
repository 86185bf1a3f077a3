#include "foundation/registry_journal.h"

#include "foundation/com_exception.h"
#include "foundation/simple_exception.h"
#include "foundation/win32_error.h"
#include "foundation/win32_exception.h"

#include <QFileDevice>
#include <QtEndian>

#include <cerrno>
#include <unistd.h>

namespace quenvolta
{

namespace
{

constexpr std::uint32_t kNumberTag = 0x1244AA02;
constexpr std::uint32_t kBlockTag = 0x1244AA04;

QByteArray Encode(std::uint32_t number)
{
    QByteArray bytes(sizeof number, Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray Record(std::uint32_t tag, const QByteArray& data)
{
    return Encode(tag) + Encode(static_cast<std::uint32_t>(data.size())) + data;
}

[[noreturn]] void RefuseFormat()
{
    throw SimpleException(u"Invalid journal file format");
}

} // namespace

void RegistryJournal::Write(const std::optional<RegistryValue>& value) const
{
    QByteArray records = Record(kNumberTag, Encode(value ? 1 : 0));
    if (value)
        records += Record(kNumberTag, Encode(static_cast<std::uint32_t>(value->type))) + Record(kBlockTag, value->data);
    if (m_file && m_file->write(records) == records.size() && m_file->flush() &&
        (::fsync(m_file->handle()) == 0 || errno == EINVAL))
        return;
    const bool isFull = m_file && m_file->error() == QFileDevice::ResourceError;
    throw ComException(HResultFromWin32(isFull ? ERROR_DISK_FULL : ERROR_WRITE_FAULT), {},
                       u"Cannot write journal file");
}

std::optional<RegistryValue> RegistryJournal::Read() const
{
    if (!m_file || !m_file->isOpen())
        throw Win32Exception(ERROR_HANDLE_EOF, u"Cannot read journal file");
    if (ReadNumber() != 1)
        return std::nullopt;
    RegistryValue value;
    value.type = static_cast<RegistryType>(ReadNumber());
    if (ReadField() != kBlockTag)
        RefuseFormat();
    value.data = ReadBytes(ReadField());
    return value;
}

std::uint32_t RegistryJournal::ReadNumber() const
{
    if (ReadField() != kNumberTag || ReadField() != sizeof(std::uint32_t))
        RefuseFormat();
    return ReadField();
}

std::uint32_t RegistryJournal::ReadField() const
{
    return qFromLittleEndian<std::uint32_t>(ReadBytes(sizeof(std::uint32_t)).constData());
}

QByteArray RegistryJournal::ReadBytes(qint64 size) const
{
    // A length that the file can't hold is not taken for one: nobody makes room for it.
    const bool fits = m_file->isSequential() || m_file->size() - m_file->pos() >= size;
    QByteArray bytes = fits ? m_file->read(size) : QByteArray();
    if (bytes.size() != size)
        throw ComException(HResultFromWin32(ERROR_HANDLE_EOF), {}, u"Cannot read journal file");
    return bytes;
}

} // namespace quenvolta
