#include "host/console_file.h"

#include "foundation/simple_exception.h"
#include "ui/string_table.h"

#include <QDataStream>
#include <QFile>
#include <QSaveFile>

namespace quenvolta
{

namespace
{

constexpr QByteArrayView kMagic("QUENVOLTA CONSOLE\r\n\x1A", 20);
constexpr QByteArrayView kTerminator("END\n", 4);
constexpr quint32 kVersion = 1;
constexpr quint32 kMostSnapIns = 16;
constexpr quint32 kLongestStream = 2 * 1024 * 1024;
constexpr qint64 kLargestFile = 64 * 1024 * 1024;

template <typename... Inserts>
[[noreturn]] void Refuse(int text, const Inserts&... inserts)
{
    throw SimpleException::FromText(LoadString(text, inserts...));
}

/// Reads the file from its beginning; what isn't there is refused.
class Reader
{
public:
    explicit Reader(const QByteArray& bytes)
        : m_bytes(bytes)
    {
    }

    QByteArray Take(qsizetype count)
    {
        if (count > m_bytes.size() - m_place)
            Refuse(StringId::kConsoleFileTooShort);
        m_place += count;
        return m_bytes.mid(m_place - count, count);
    }

    quint32 TakeNumber()
    {
        QDataStream stream(Take(4));
        stream.setByteOrder(QDataStream::LittleEndian);
        quint32 number = 0;
        stream >> number;
        return number;
    }

    bool IsAtEnd() const { return m_place == m_bytes.size(); }

private:
    const QByteArray& m_bytes;
    qsizetype m_place = 0;
};

ConsoleFile::SnapIn TakeSnapIn(Reader& reader)
{
    ConsoleFile::SnapIn snapIn;
    snapIn.classId = QUuid::fromRfc4122(reader.Take(16));
    const quint32 length = reader.TakeNumber();
    if (length > kLongestStream)
        Refuse(StringId::kConsoleFileLength, static_cast<qint64>(length));
    snapIn.stream = reader.Take(length);
    return snapIn;
}

} // namespace

QByteArray EncodeConsoleFile(const ConsoleFile& file)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    const auto write = [&stream](QByteArrayView data) {
        stream.writeRawData(data.data(), static_cast<int>(data.size()));
    };
    write(kMagic);
    stream << kVersion << static_cast<quint32>(file.snapIns.size());
    for (const ConsoleFile::SnapIn& snapIn : file.snapIns) {
        write(snapIn.classId.toRfc4122());
        stream << static_cast<quint32>(snapIn.stream.size());
        write(snapIn.stream);
    }
    write(kTerminator);
    return bytes;
}

ConsoleFile DecodeConsoleFile(const QByteArray& bytes)
{
    if (!bytes.startsWith(kMagic))
        Refuse(StringId::kConsoleFileNone);
    Reader reader(bytes);
    reader.Take(kMagic.size());
    if (const quint32 version = reader.TakeNumber(); version != kVersion)
        Refuse(StringId::kConsoleFileVersion, static_cast<qint64>(version));
    const quint32 count = reader.TakeNumber();
    if (count == 0 || count > kMostSnapIns)
        Refuse(StringId::kConsoleFileCount, static_cast<qint64>(count));
    ConsoleFile file;
    for (quint32 i = 0; i < count; ++i)
        file.snapIns.append(TakeSnapIn(reader));
    if (reader.Take(kTerminator.size()) != kTerminator || !reader.IsAtEnd())
        Refuse(StringId::kConsoleFileTerminator);
    return file;
}

ConsoleFile ReadConsoleFile(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        Refuse(StringId::kConsoleFileNotOpened, fileName, file.errorString());
    if (file.size() > kLargestFile)
        Refuse(StringId::kConsoleFileNotOpened, fileName, LoadString(StringId::kConsoleFileNone));
    try {
        return DecodeConsoleFile(file.readAll());
    } catch (const Exception& exception) {
        Refuse(StringId::kConsoleFileNotOpened, fileName, exception.GetMessage());
    }
}

void WriteConsoleFile(const QString& fileName, const ConsoleFile& file)
{
    QSaveFile saved(fileName);
    const QByteArray bytes = EncodeConsoleFile(file);
    if (!saved.open(QIODevice::WriteOnly) || saved.write(bytes) != bytes.size() || !saved.commit())
        Refuse(StringId::kConsoleFileNotSaved, fileName, saved.errorString());
}

} // namespace quenvolta
