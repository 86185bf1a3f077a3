#include "provider/request_journal.h"

#include "foundation/file_time.h"
#include "foundation/win32_exception.h"
#include "platform/channel/message_codec.h"
#include "provider/provider_error.h"
#include "provider/provider_texts.h"

#include <QtEndian>

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kKey = "Requests"_L1;
constexpr FileTime kKeptFor = FileTime{24} * 60 * kFileTimePerMinute;

// An entry: when it was noted, then the answer's frame without its length; no frame while the request runs.
RegistryValue MakeEntry(const QByteArray& frame)
{
    RegistryValue entry = RegistryValue::FromQword(static_cast<std::uint64_t>(CurrentFileTime()));
    entry.type = RegistryType::Binary;
    entry.data.append(frame);
    return entry;
}

FileTime TimeOf(const RegistryValue& entry)
{
    return entry.data.size() < static_cast<qsizetype>(sizeof(FileTime))
               ? 0
               : qFromLittleEndian<FileTime>(entry.data.constData());
}

std::optional<ResultMessage> ResultOf(const RegistryValue& entry)
{
    const auto message =
        Decode(QByteArrayView(entry.data).sliced(qMin<qsizetype>(entry.data.size(), sizeof(FileTime))));
    const Message* decoded = std::get_if<Message>(&message);
    const ResultMessage* result = decoded ? std::get_if<ResultMessage>(decoded) : nullptr;
    return result ? std::optional(*result) : std::nullopt;
}

} // namespace

RequestJournal::RequestJournal(const QString& dataFolder)
    : m_store(u"requests"_s, dataFolder + "/requests.db"_L1)
    , m_folder(dataFolder)
{
}

RequestJournal::Known RequestJournal::Begin(const QUuid& request)
{
    if (const Win32Error error = m_store.CreateKey(kKey); error != ERROR_SUCCESS)
        Refuse(error);
    Prune();
    RegistryValue entry;
    const Win32Error found = m_store.QueryValue(kKey, request.toString(), &entry);
    if (found == ERROR_SUCCESS)
        return {true, ResultOf(entry)};
    if (found != ERROR_FILE_NOT_FOUND)
        Refuse(found);
    if (const Win32Error error = m_store.SetValue(kKey, request.toString(), MakeEntry({})); error != ERROR_SUCCESS)
        Refuse(error);
    return {};
}

void RequestJournal::Finish(const QUuid& request, const ResultMessage& result)
{
    // The change is made: a journal that can't be written now must not turn it into a failure.
    m_store.SetValue(kKey, request.toString(), MakeEntry(Encode(result).sliced(kFrameHeaderSize)));
}

void RequestJournal::Forget(const QUuid& request)
{
    m_store.DeleteValue(kKey, request.toString());
}

void RequestJournal::Prune()
{
    if (std::exchange(m_pruned, true))
        return;
    QList<NamedRegistryValue> entries;
    m_store.EnumerateValues(kKey, &entries);
    const FileTime oldest = CurrentFileTime() - kKeptFor;
    for (const NamedRegistryValue& entry : std::as_const(entries)) {
        if (TimeOf(entry.value) < oldest)
            m_store.DeleteValue(kKey, entry.name);
    }
}

void RequestJournal::Refuse(Win32Error error) const
{
    throw ProviderError(HResultFromWin32(error),
                        replies::kCannotReadSettings.arg(m_folder, Win32Exception(error).GetMessage()));
}

} // namespace quenvolta
