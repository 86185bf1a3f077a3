#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quenvolta
{

/// Sort keys of names that are plain ASCII, in the order that a collator for English has: punctuation, then numbers by
/// their value, then letters without regard to case. They cost a small part of the collator's own, and most names of
/// files are such.
class PlainSortKeys
{
public:
    /// Room for so many names.
    void Reserve(std::size_t names);

    /// Appends the key of the next name; those of folders come before all others. False when it isn't plain ASCII; the
    /// keys are of no use then.
    bool Add(const QString& name, bool isFolder);

    /// Below zero when the name that was added as `left` (0 is the first) comes before `right`, 0 when neither does.
    int Compare(std::uint32_t left, std::uint32_t right) const { return KeyOf(left).compare(KeyOf(right)); }

private:
    std::string_view KeyOf(std::uint32_t name) const
    {
        return std::string_view(m_bytes).substr(m_ends[name], m_ends[name + 1] - m_ends[name]);
    }

    std::string m_bytes;
    std::vector<std::size_t> m_ends{0};
};

} // namespace quenvolta
