#pragma once

#include "provider/standard/directory_entry.h"

#include <QList>
#include <QString>

#include <array>

namespace quenvolta
{

/// Keeps the best of the objects that it is offered: those with exactly the name, then those that begin with the text,
/// then those that hold it, in the name or the full name. Case doesn't matter. Never holds much more than the limit.
class SearchResults
{
public:
    SearchResults(const QString& text, qsizetype limit);

    void Offer(const DirectoryEntry& object);
    /// False when some that match were left out.
    bool IsComplete() const { return m_matches <= m_limit; }
    /// The best first, at most the limit.
    QList<DirectoryEntry> Best() const;

private:
    enum Rank { Exact, Beginning, Inside, None };

    Rank RankOf(const DirectoryEntry& object) const;

    QString m_text;
    qsizetype m_limit;
    qsizetype m_matches = 0;
    std::array<QList<DirectoryEntry>, None> m_byRank;
};

} // namespace quenvolta
