#pragma once

#include "snapin/plain_sort_keys.h"

#include <QCollator>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <numeric>
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
        if (!m_hasPlainOrder || !SortPlain(nodes))
            SortCollated(nodes);
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

    // False, and nothing done, when a name isn't plain.
    template <typename NodePtr>
    bool SortPlain(std::vector<NodePtr>& nodes) const
    {
        PlainSortKeys keys;
        keys.Reserve(nodes.size());
        for (const NodePtr& node : nodes) {
            if (!keys.Add(node->Name(), node->IsFolder()))
                return false;
        }
        std::vector<std::uint32_t> order(nodes.size());
        std::iota(order.begin(), order.end(), 0U);
        std::ranges::stable_sort(order, [&](std::uint32_t left, std::uint32_t right) {
            const int byName = keys.Compare(left, right);
            return byName != 0 ? byName < 0 : m_collator.compare(nodes[left]->Path(), nodes[right]->Path()) < 0;
        });
        std::vector<NodePtr> sorted;
        sorted.reserve(nodes.size());
        for (const std::uint32_t place : order)
            sorted.push_back(std::move(nodes[place]));
        nodes = std::move(sorted);
        return true;
    }

    template <typename NodePtr>
    void SortCollated(std::vector<NodePtr>& nodes) const
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

    QCollator m_collator;
    // The collator's language has no rules of its own for plain letters.
    bool m_hasPlainOrder;
};

} // namespace quenvolta
