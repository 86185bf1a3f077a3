#include "provider/standard/directory_class.h"

#include "foundation/exception.h"
#include "foundation/sid.h"
#include "provider/provider_error.h"
#include "provider/standard/known_hosts.h"
#include "provider/standard/search_results.h"
#include "provider/standard/standard_texts.h"
#include "provider/svn/repository_names.h"

#include <QDeadlineTimer>
#include <QSet>
#include <QSysInfo>

#include <array>
#include <chrono>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kLongestText = 256;
constexpr qint32 kMostObjects = 500;
constexpr qsizetype kMostIdentifiers = 1000;
// Somebody types and waits, and the server's other calls wait as well.
constexpr std::chrono::seconds kLongestScan{2};

struct TimeIsOver {
};

// Names of computers' accounts end with this sign.
constexpr QChar kComputerSign = u'$';

DirectoryEntry UserObject(const DatabaseAccount& account)
{
    const bool isComputer = account.name.size() > 1 && account.name.endsWith(kComputerSign);
    return {(isComputer ? directorykinds::kComputer : directorykinds::kUser).toString(), account.name, account.fullName,
            account.sid};
}

DirectoryEntry GroupObject(const DatabaseAccount& account)
{
    return {directorykinds::kGroup.toString(), account.name, account.fullName, account.sid};
}

InstanceRow Row(const MethodCall& call, const DirectoryEntry& object)
{
    InstanceRow row(call.Context().classes.Find(u"Quenvolta_DirectoryObject"_s));
    row.Set(u"Kind", object.kind).Set(u"Name", object.name).Set(u"FullName", object.fullName);
    if (!object.sid.isEmpty())
        row.Set(u"SID", object.sid).Set(u"Domain", QSysInfo::machineHostName());
    if (!object.dnsHostName.isEmpty())
        row.Set(u"DnsHostName", object.dnsHostName);
    return row;
}

// The text to look for. DOMAIN\NAME means an account of this computer only when the domain is its name.
std::optional<QString> SearchedText(const MethodCall& call)
{
    const QString text = call.String(u"Text").trimmed();
    if (text.isEmpty() || text.size() > kLongestText)
        throw ProviderError(WBEM_E_INVALID_PARAMETER, standardtexts::kBadSearchText.arg(QString::number(kLongestText)));
    const qsizetype sign = text.indexOf(u'\\');
    if (sign < 0)
        return text;
    const bool isHere = QStringView(text).first(sign).compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
    return isHere && sign + 1 < text.size() ? std::optional(text.sliced(sign + 1)) : std::nullopt;
}

QStringList SearchedKinds(const MethodCall& call)
{
    constexpr std::array kKnown{directorykinds::kUser, directorykinds::kGroup, directorykinds::kComputer,
                                directorykinds::kHost};
    QStringList kinds = call.StringArray(u"Kinds");
    for (const QString& kind : std::as_const(kinds)) {
        if (std::ranges::find(kKnown, QStringView(kind)) == kKnown.end())
            throw ProviderError(WBEM_E_INVALID_PARAMETER,
                                standardtexts::kBadSearchKind.arg(RepositoryNames::Show(kind)));
    }
    return kinds;
}

} // namespace

DirectoryClass::DirectoryClass(std::unique_ptr<AccountDatabase> users, std::unique_ptr<AccountDatabase> groups)
    : m_users(std::move(users))
    , m_groups(std::move(groups))
{
    Handle(u"Search"_s, Effect::Reads, [this](MethodCall& call) { Search(call); });
    Handle(u"Resolve"_s, Effect::Reads, [this](MethodCall& call) { Resolve(call); });
}

void DirectoryClass::Search(MethodCall& call)
{
    const std::optional<QString> text = SearchedText(call);
    const QStringList kinds = SearchedKinds(call);
    const qint32 limit = call.Int32(u"MaxObjects");
    if (limit < 1 || limit > kMostObjects)
        throw ProviderError(WBEM_E_INVALID_PARAMETER,
                            standardtexts::kBadSearchLimit.arg(QString::number(kMostObjects), QString::number(limit)));
    bool complete = true;
    if (text) {
        SearchResults results(*text, limit);
        if (kinds.contains(directorykinds::kHost)) {
            for (const DirectoryEntry& host : ReadKnownHosts())
                results.Offer(host);
        }
        complete = SearchAccounts(*text, kinds, call.Context().cancel, &results) && results.IsComplete();
        for (const DirectoryEntry& object : results.Best())
            call.ReturnElement(u"Objects"_s, Row(call, object));
    }
    call.Return(u"Complete", complete);
}

bool DirectoryClass::SearchAccounts(const QString& text, const QStringList& kinds, const CancelCheck& cancel,
                                    SearchResults* results) const
{
    struct Source {
        const AccountDatabase& accounts;
        DirectoryEntry (*toObject)(const DatabaseAccount&);
        bool isWanted;
    };
    const std::array sources{Source{*m_users, &UserObject,
                                    kinds.contains(directorykinds::kUser) || kinds.contains(directorykinds::kComputer)},
                             Source{*m_groups, &GroupObject, kinds.contains(directorykinds::kGroup)}};
    const QDeadlineTimer deadline(kLongestScan);
    bool inTime = true;
    for (const Source& source : sources) {
        if (!source.isWanted)
            continue;
        QSet<QString> namesakes; // accounts of exactly the name, and so few
        const auto offer = [&](const DatabaseAccount& account) {
            const DirectoryEntry object = source.toObject(account);
            if (!kinds.contains(object.kind))
                return;
            if (object.name.compare(text, Qt::CaseInsensitive) == 0) {
                if (namesakes.contains(object.name))
                    return;
                namesakes.insert(object.name);
            }
            results->Offer(object);
        };
        if (const std::optional<DatabaseAccount> exact = source.accounts.Find(text))
            offer(*exact);
        try {
            source.accounts.Visit([&](const DatabaseAccount& account) {
                ThrowIfCancelled(cancel);
                if (deadline.hasExpired())
                    throw TimeIsOver();
                offer(account);
            });
        } catch (const TimeIsOver&) {
            inTime = false;
        }
    }
    return inTime;
}

void DirectoryClass::Resolve(MethodCall& call)
{
    const QStringList identifiers = call.StringArray(u"SIDs");
    if (identifiers.size() > kMostIdentifiers)
        throw ProviderError(WBEM_E_INVALID_PARAMETER,
                            standardtexts::kTooManyIdentifiers.arg(QString::number(kMostIdentifiers)));
    for (const QString& identifier : identifiers) {
        ThrowIfCancelled(call.Context().cancel);
        if (const std::optional<DirectoryEntry> object = Find(identifier))
            call.ReturnElement(u"Objects"_s, Row(call, *object));
    }
}

std::optional<DirectoryEntry> DirectoryClass::Find(const QString& identifier) const
{
    Sid sid;
    try {
        sid = StringToSid(identifier);
    } catch (const Exception&) {
        return std::nullopt; // what isn't an identifier is nobody's
    }
    if (sid.authority != kUnixAuthority || sid.subAuthorities.size() != 2)
        return std::nullopt;
    const bool isUser = sid.subAuthorities[0] == kUnixUserKind;
    if (!isUser && sid.subAuthorities[0] != kUnixGroupKind)
        return std::nullopt;
    const auto account = (isUser ? m_users : m_groups)->FindNumber(sid.subAuthorities[1]);
    if (!account)
        return std::nullopt;
    return isUser ? UserObject(*account) : GroupObject(*account);
}

} // namespace quenvolta
