#pragma once

#include <QCollator>
#include <QString>

#include <algorithm>
#include <memory>
#include <vector>

namespace quenvolta
{

/// The order of repositories and entries: folders before files, then by name and by path, runs of digits as numbers
/// and letters without regard to case.
class NaturalOrder
{
public:
    NaturalOrder();

    /// Sorts nodes (pointers to what has IsFolder, Name and Path). Comparisons use keys made once for each node.
    template <typename NodePtr>
    void Sort(std::vector<NodePtr>& nodes) const
    {
        std::vector<Keyed<NodePtr>> keyed;
        keyed.reserve(nodes.size());
        for (NodePtr& node : nodes) {
            QCollatorSortKey key = m_collator.sortKey(node->Name());
            keyed.push_back({std::move(node), std::move(key)});
        }
        std::ranges::stable_sort(keyed, [this](const Keyed<NodePtr>& left, const Keyed<NodePtr>& right) {
            if (left.node->IsFolder() != right.node->IsFolder())
                return left.node->IsFolder();
            const int byName = left.key.compare(right.key);
            return byName != 0 ? byName < 0 : m_collator.compare(left.node->Path(), right.node->Path()) < 0;
        });
        std::ranges::transform(keyed, nodes.begin(), [](Keyed<NodePtr>& entry) { return std::move(entry.node); });
    }

    /// The same order for a single pair of nodes.
    template <typename Node>
    bool IsBefore(const Node& left, const Node& right) const
    {
        if (left.IsFolder() != right.IsFolder())
            return left.IsFolder();
        const int byName = m_collator.compare(left.Name(), right.Name());
        return byName != 0 ? byName < 0 : m_collator.compare(left.Path(), right.Path()) < 0;
    }

private:
    template <typename NodePtr>
    struct Keyed {
        NodePtr node;
        QCollatorSortKey key;
    };

    QCollator m_collator;
};

} // namespace quenvolta
