#include "platform/channel/shape_cache.h"

#include <algorithm>
#include <utility>

namespace quenvolta
{

namespace
{

constexpr qsizetype kMaxEntries = 16;
constexpr qsizetype kMaxEntrySize = 16 * 1024;

} // namespace

const ShapeCache::Entry* ShapeCache::Find(QByteArrayView rest)
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& entry) { return rest.startsWith(entry.bytes); });
    if (found == m_entries.end())
        return nullptr;
    std::rotate(m_entries.begin(), found, found + 1);
    return &m_entries.first();
}

void ShapeCache::Keep(Entry entry)
{
    if (entry.bytes.size() > kMaxEntrySize)
        return;
    if (m_entries.size() == kMaxEntries)
        m_entries.removeLast();
    m_entries.prepend(std::move(entry));
}

} // namespace quenvolta
