#include "model/computer_directory.h"

#include "foundation/com_exception.h"
#include "model/server_call.h"
#include "platform/wbem/error_info.h"
#include "wmi/wmi_error.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// As many as the server looks up at once.
constexpr qsizetype kMostIdentifiers = 1000;

// By DirectoryObjectKind.
constexpr std::array<QStringView, 4> kKinds{u"user", u"group", u"computer", u"host"};

QString TextOf(const WMIObject& object, const QString& name)
{
    return object.IsNull(name) ? QString() : object.GetString(name);
}

DirectoryObject ReadObject(const WMIObject& object)
{
    const auto kind = std::ranges::find(kKinds, QStringView(object.GetString(u"Kind"_s)));
    if (kind == kKinds.end())
        throw ComException(E_INVALIDARG);
    return {static_cast<DirectoryObjectKind>(kind - kKinds.begin()),
            TextOf(object, u"Domain"_s),
            object.GetString(u"Name"_s),
            TextOf(object, u"FullName"_s),
            TextOf(object, u"SID"_s),
            TextOf(object, u"DnsHostName"_s)};
}

QList<DirectoryObject> ReadObjects(const WMIObject& out)
{
    QList<DirectoryObject> objects;
    for (const WMIObject& each : out.GetObjectArray(u"Objects"_s))
        objects.append(ReadObject(each));
    return objects;
}

} // namespace

DirectorySearch::DirectorySearch(WbemCallResultPtr result)
    : m_result(std::move(result))
{
}

std::optional<DirectoryAnswer> DirectorySearch::TakeAnswer()
{
    SetErrorInfo(nullptr);
    WbemObjectPtr object;
    const HRESULT code = m_result->GetResultObject(0, &object);
    if (code == WBEM_S_TIMEDOUT)
        return std::nullopt;
    RaiseWmiError(code);
    const WMIObject out(object);
    return DirectoryAnswer{ReadObjects(out), out.GetBool(u"Complete"_s)};
}

CComputerDirectory::CComputerDirectory(WMIConnection connection)
    : m_connection(std::move(connection))
    , m_class(u"Quenvolta_Directory"_s, m_connection)
{
}

DirectorySearch CComputerDirectory::Search(const QString& text, const QList<DirectoryObjectKind>& kinds,
                                           std::int32_t maxObjects)
{
    QStringList names;
    for (const DirectoryObjectKind kind : kinds)
        names.append(kKinds[static_cast<std::size_t>(kind)].toString());
    ServerCall call(m_connection, m_class, u"Search"_s);
    call.With(u"Text"_s, text).With(u"Kinds"_s, names).With(u"MaxObjects"_s, maxObjects);
    return DirectorySearch(call.Start(m_class.ClassName(), nullptr));
}

QList<DirectoryObject> CComputerDirectory::Resolve(const QStringList& sids)
{
    QList<DirectoryObject> objects;
    for (qsizetype first = 0; first < sids.size(); first += kMostIdentifiers) {
        objects += ReadObjects(ServerCall(m_connection, m_class, u"Resolve"_s)
                                   .With(u"SIDs"_s, sids.mid(first, kMostIdentifiers))
                                   .Run(m_class.ClassName()));
    }
    return objects;
}

} // namespace quenvolta
