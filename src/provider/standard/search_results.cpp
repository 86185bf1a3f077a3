#include "provider/standard/search_results.h"

#include <algorithm>

namespace quenvolta
{

SearchResults::SearchResults(const QString& text, qsizetype limit)
    : m_text(text)
    , m_limit(limit)
{
}

SearchResults::Rank SearchResults::RankOf(const DirectoryEntry& object) const
{
    if (object.name.compare(m_text, Qt::CaseInsensitive) == 0)
        return Exact;
    const auto any = [&](auto matches) {
        return matches(object.name) || matches(object.fullName) || matches(object.dnsHostName);
    };
    if (any([this](const QString& text) { return text.startsWith(m_text, Qt::CaseInsensitive); }))
        return Beginning;
    if (any([this](const QString& text) { return text.contains(m_text, Qt::CaseInsensitive); }))
        return Inside;
    return None;
}

void SearchResults::Offer(const DirectoryEntry& object)
{
    const Rank rank = RankOf(object);
    if (rank == None)
        return;
    ++m_matches;
    if (m_byRank[rank].size() < m_limit)
        m_byRank[rank].append(object);
}

QList<DirectoryEntry> SearchResults::Best() const
{
    QList<DirectoryEntry> best;
    for (QList<DirectoryEntry> each : m_byRank) {
        std::ranges::sort(each, [](const DirectoryEntry& left, const DirectoryEntry& right) {
            return left.name.compare(right.name, Qt::CaseInsensitive) < 0;
        });
        best += each;
    }
    best.resize(std::min(best.size(), m_limit));
    return best;
}

} // namespace quenvolta
