#pragma once

// A sequence read and changed by position, for the query lists that are filled by binary
// searches over positions: such a list must see exactly the probes an array would see, so it
// cannot be kept as a search tree ordered by key. It is a B+ tree whose inner nodes count the
// elements below each child, so reading the element at an index, inserting before an index and
// erasing cost O(log n) instead of the O(n) moves of an array. The path of the last read is
// remembered: the probes of a binary search fall ever closer together, and each starts from the
// lowest node that holds it. Nodes are kept in deques, so a growing tree never copies its leaves
// (at a million elements, fresh memory is what costs most). A stretch of reads without changes
// (lookups after the list is filled) is served from an array copy made for it.
//
// A caller that must find an element again (by a handle of its own) is told the leaf each
// element is put in, through a callback at every insertion and leaf split, and asks for the
// element's index by (leaf, offset).

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <vector>

#include "host/Assert.h"

namespace kelaz {

template <class T, std::size_t LeafCap = 512, std::size_t Fanout = 64>
class CountedSequence {
    static_assert(LeafCap >= 4 && Fanout >= 4, "nodes must split into non-empty halves");

public:
    using NodeId = std::int32_t;
    static constexpr NodeId kNone = -1;

    CountedSequence() { clear(); }

    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }

    void clear() {
        m_leaves.assign(1, Leaf{});
        m_inners.assign(1, Inner{});
        Inner& root = m_inners[0];
        root.leaves = true;
        root.count = 1;
        root.child[0] = 0;
        root.upto[0] = 0;
        m_leaves[0].parent = 0;
        m_root = 0;
        m_first = 0;
        m_size = 0;
        Forget();
    }

    const T& operator[](std::size_t i) const {
        KELAZ_ASSERT(i < m_size, "sequence index out of range");
        if (m_flatFresh) return m_flat[i];
        // Enough reads without a change pay for an array copy: the searches that follow read
        // it at array speed. A binary search between two insertions never gets this far.
        if (++m_readsSinceChange > m_size / 16 + 64) {
            Flatten();
            return m_flat[i];
        }
        Finger& f = m_finger;
        if (f.leaf == kNone || i < f.leafStart || i - f.leafStart >= LeafAt(f.leaf).count) {
            Reach(i);
        }
        return LeafAt(f.leaf).items[i - f.leafStart];
    }

    // Inserts before index i (i == size appends). placed(element, leaf) is called for the new
    // element and for every element a split moves to another leaf.
    template <class Placed>
    void insert(std::size_t i, const T& value, Placed&& placed) {
        KELAZ_ASSERT(i <= m_size, "sequence insert position out of range");
        Step path[kMaxDepth];
        int depth = 0;
        const Place p = Descend(i, path, &depth);
        Forget();
        ++m_size;
        if (LeafAt(p.leaf).count < LeafCap) {
            PutInLeaf(p.leaf, p.offset, value, placed);
            for (int d = depth - 1; d >= 0; --d) Grow(path[d]);
            return;
        }
        const NodeId right = SplitLeaf(p.leaf, placed);
        const std::size_t kept = LeafAt(p.leaf).count;
        if (p.offset <= kept) {
            PutInLeaf(p.leaf, p.offset, value, placed);
        } else {
            PutInLeaf(right, p.offset - kept, value, placed);
        }
        InsertChild(path, depth - 1, right);
    }
    void insert(std::size_t i, const T& value) {
        insert(i, value, [](const T&, NodeId) {});
    }
    void push_back(const T& value) { insert(m_size, value); }

    // The elements of one leaf, in order.
    std::span<const T> leafItems(NodeId leaf) const {
        const Leaf& l = LeafAt(leaf);
        return std::span<const T>(l.items.data(), l.count);
    }

    // The index of the element at offset in the leaf.
    std::size_t indexOf(NodeId leaf, std::size_t offset) const {
        std::size_t index = offset;
        NodeId child = leaf;
        for (NodeId node = LeafAt(leaf).parent; node != kNone;) {
            const Inner& n = InnerAt(node);
            const std::size_t slot = SlotOf(n, child);
            if (slot > 0) index += n.upto[slot - 1];
            child = node;
            node = n.parent;
        }
        return index;
    }

    void erase(std::size_t i) {
        KELAZ_ASSERT(i < m_size, "sequence index out of range");
        const Place p = Descend(i, nullptr, nullptr);
        eraseAt(p.leaf, p.offset);
    }

    void eraseAt(NodeId leaf, std::size_t offset) {
        Leaf& l = LeafAt(leaf);
        KELAZ_ASSERT(offset < l.count, "sequence leaf offset out of range");
        std::copy(l.items.begin() + static_cast<std::ptrdiff_t>(offset + 1),
                  l.items.begin() + static_cast<std::ptrdiff_t>(l.count),
                  l.items.begin() + static_cast<std::ptrdiff_t>(offset));
        --l.count;
        --m_size;
        Forget();
        NodeId child = leaf;
        for (NodeId node = l.parent; node != kNone;) {
            Inner& n = InnerAt(node);
            const std::size_t slot = SlotOf(n, child);
            for (std::size_t k = slot; k < n.count; ++k) --n.upto[k];
            child = node;
            node = n.parent;
        }
        if (l.count == 0 && (l.prev != kNone || l.next != kNone)) RemoveEmptyLeaf(leaf);
    }

    template <class F>
    void forEach(F&& f) const {
        for (NodeId leaf = m_first; leaf != kNone; leaf = LeafAt(leaf).next) {
            for (const T& item : leafItems(leaf)) f(item);
        }
    }

private:
    // Fanout 64 and half-full nodes reach 2^32 elements within 7 levels.
    static constexpr int kMaxDepth = 16;

    struct Leaf {
        NodeId parent = kNone;
        NodeId prev = kNone;
        NodeId next = kNone;
        std::size_t count = 0;
        std::array<T, LeafCap> items{};
    };
    struct Inner {
        NodeId parent = kNone;
        bool leaves = false;
        std::size_t count = 0;
        std::array<NodeId, Fanout> child{};
        // upto[k]: the elements below children 0..k.
        std::array<std::size_t, Fanout> upto{};
    };
    struct Step {
        NodeId node = kNone;
        std::size_t slot = 0;
    };
    struct Place {
        NodeId leaf = kNone;
        std::size_t offset = 0;
    };

    Leaf& LeafAt(NodeId id) { return m_leaves[static_cast<std::size_t>(id)]; }
    const Leaf& LeafAt(NodeId id) const { return m_leaves[static_cast<std::size_t>(id)]; }
    Inner& InnerAt(NodeId id) { return m_inners[static_cast<std::size_t>(id)]; }
    const Inner& InnerAt(NodeId id) const { return m_inners[static_cast<std::size_t>(id)]; }

    static std::size_t SlotOf(const Inner& n, NodeId child) {
        const auto end = n.child.begin() + static_cast<std::ptrdiff_t>(n.count);
        const auto it = std::find(n.child.begin(), end, child);
        KELAZ_ASSERT(it != end, "sequence node is not its parent's child");
        return static_cast<std::size_t>(it - n.child.begin());
    }

    // The first child whose running count passes i (count when none does). Without branches:
    // the searches go to unpredictable children, and this runs for every probe.
    static std::size_t FirstAbove(const Inner& n, std::size_t i) {
        const std::size_t* base = n.upto.data();
        for (std::size_t len = n.count; len > 1;) {
            const std::size_t half = len / 2;
            base = base[half] <= i ? base + half : base;
            len -= half;
        }
        return static_cast<std::size_t>(base - n.upto.data()) + (*base <= i ? 1 : 0);
    }

    std::size_t SizeOf(const Inner& parent, NodeId child) const {
        if (parent.leaves) return LeafAt(child).count;
        const Inner& c = InnerAt(child);
        return c.count == 0 ? 0 : c.upto[c.count - 1];
    }

    void Recount(NodeId node) {
        Inner& n = InnerAt(node);
        std::size_t sum = 0;
        for (std::size_t k = 0; k < n.count; ++k) {
            sum += SizeOf(n, n.child[k]);
            n.upto[k] = sum;
        }
    }

    void Grow(const Step& step) {
        Inner& n = InnerAt(step.node);
        for (std::size_t k = step.slot; k < n.count; ++k) ++n.upto[k];
    }

    void SetParent(const Inner& parent, NodeId child, NodeId parentId) {
        if (parent.leaves) {
            LeafAt(child).parent = parentId;
        } else {
            InnerAt(child).parent = parentId;
        }
    }

    // The path of the last read: the nodes from the root down and the index each one starts
    // at. A read near the last one starts from the lowest node that holds it.
    struct Finger {
        int depth = 0;
        std::array<NodeId, kMaxDepth> node{};
        std::array<std::size_t, kMaxDepth> start{};
        NodeId leaf = kNone;
        std::size_t leafStart = 0;
    };

    // After a change the remembered path and the array copy no longer hold.
    void Forget() {
        m_finger.depth = 0;
        m_finger.leaf = kNone;
        m_flatFresh = false;
        m_readsSinceChange = 0;
    }

    void Flatten() const {
        // The copy keeps its memory from one change to the next.
        m_flat.clear();
        m_flat.reserve(m_size);
        forEach([this](const T& item) { m_flat.push_back(item); });
        m_flatFresh = true;
    }

    // Moves the finger to the leaf holding index i.
    void Reach(std::size_t i) const {
        Finger& f = m_finger;
        int d = f.depth;
        while (d > 1) {
            const Inner& n = InnerAt(f.node[static_cast<std::size_t>(d - 1)]);
            const std::size_t start = f.start[static_cast<std::size_t>(d - 1)];
            if (i >= start && i - start < n.upto[n.count - 1]) break;
            --d;
        }
        NodeId node = m_root;
        std::size_t base = 0;
        if (d > 0) {
            node = f.node[static_cast<std::size_t>(d - 1)];
            base = f.start[static_cast<std::size_t>(d - 1)];
            --d;
        }
        for (;; ++d) {
            KELAZ_ASSERT(d < kMaxDepth, "sequence tree too deep");
            f.node[static_cast<std::size_t>(d)] = node;
            f.start[static_cast<std::size_t>(d)] = base;
            const Inner& n = InnerAt(node);
            const std::size_t slot = FirstAbove(n, i - base);
            if (slot > 0) base += n.upto[slot - 1];
            if (n.leaves) {
                f.depth = d + 1;
                f.leaf = n.child[slot];
                f.leafStart = base;
                return;
            }
            node = n.child[slot];
        }
    }

    // The leaf holding index i, and the path to it. For i == size: the end of the last leaf.
    Place Descend(std::size_t i, Step* path, int* depth) const {
        NodeId node = m_root;
        for (int d = 0;; ++d) {
            KELAZ_ASSERT(d < kMaxDepth, "sequence tree too deep");
            const Inner& n = InnerAt(node);
            std::size_t slot = FirstAbove(n, i);
            if (slot == n.count) slot = n.count - 1;
            if (slot > 0) i -= n.upto[slot - 1];
            if (path != nullptr) path[d] = Step{node, slot};
            if (n.leaves) {
                if (depth != nullptr) *depth = d + 1;
                return Place{n.child[slot], i};
            }
            node = n.child[slot];
        }
    }

    template <class Placed>
    void PutInLeaf(NodeId leaf, std::size_t offset, const T& value, Placed& placed) {
        Leaf& l = LeafAt(leaf);
        std::copy_backward(l.items.begin() + static_cast<std::ptrdiff_t>(offset),
                           l.items.begin() + static_cast<std::ptrdiff_t>(l.count),
                           l.items.begin() + static_cast<std::ptrdiff_t>(l.count + 1));
        l.items[offset] = value;
        ++l.count;
        placed(value, leaf);
    }

    // Moves the upper half of a full leaf to a new leaf linked after it; the new leaf's id.
    template <class Placed>
    NodeId SplitLeaf(NodeId leaf, Placed& placed) {
        const auto right = static_cast<NodeId>(m_leaves.size());
        m_leaves.emplace_back();
        Leaf& l = LeafAt(leaf);
        Leaf& r = LeafAt(right);
        const std::size_t keep = LeafCap / 2;
        std::copy(l.items.begin() + static_cast<std::ptrdiff_t>(keep),
                  l.items.begin() + static_cast<std::ptrdiff_t>(l.count), r.items.begin());
        r.count = l.count - keep;
        l.count = keep;
        r.prev = leaf;
        r.next = l.next;
        if (l.next != kNone) LeafAt(l.next).prev = right;
        l.next = right;
        r.parent = l.parent;
        for (std::size_t k = 0; k < r.count; ++k) placed(r.items[k], right);
        return right;
    }

    // Puts newChild right after path[level]'s child, splitting full nodes upwards. The element
    // just inserted is already in its leaf.
    void InsertChild(const Step* path, int level, NodeId newChild) {
        for (;;) {
            const NodeId nodeId = path[level].node;
            const std::size_t slot = path[level].slot + 1;
            if (InnerAt(nodeId).count < Fanout) {
                Inner& n = InnerAt(nodeId);
                std::copy_backward(n.child.begin() + static_cast<std::ptrdiff_t>(slot),
                                   n.child.begin() + static_cast<std::ptrdiff_t>(n.count),
                                   n.child.begin() + static_cast<std::ptrdiff_t>(n.count + 1));
                n.child[slot] = newChild;
                ++n.count;
                SetParent(n, newChild, nodeId);
                Recount(nodeId);
                for (int d = level - 1; d >= 0; --d) Grow(path[d]);
                return;
            }
            const NodeId right = SplitInner(nodeId, slot, newChild);
            if (level == 0) {
                const auto root = static_cast<NodeId>(m_inners.size());
                m_inners.emplace_back();
                Inner& r = InnerAt(root);
                r.count = 2;
                r.child[0] = nodeId;
                r.child[1] = right;
                InnerAt(nodeId).parent = root;
                InnerAt(right).parent = root;
                Recount(root);
                m_root = root;
                return;
            }
            newChild = right;
            --level;
        }
    }

    // Splits a full inner node while putting newChild at slot; the new right node's id.
    NodeId SplitInner(NodeId nodeId, std::size_t slot, NodeId newChild) {
        const auto right = static_cast<NodeId>(m_inners.size());
        m_inners.emplace_back();
        Inner& n = InnerAt(nodeId);
        Inner& r = InnerAt(right);
        std::array<NodeId, Fanout + 1> all{};
        std::copy(n.child.begin(), n.child.begin() + static_cast<std::ptrdiff_t>(slot),
                  all.begin());
        all[slot] = newChild;
        std::copy(n.child.begin() + static_cast<std::ptrdiff_t>(slot), n.child.end(),
                  all.begin() + static_cast<std::ptrdiff_t>(slot + 1));
        const std::size_t keep = (Fanout + 1) / 2;
        r.leaves = n.leaves;
        r.parent = n.parent;
        n.count = keep;
        r.count = Fanout + 1 - keep;
        std::copy(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(keep), n.child.begin());
        std::copy(all.begin() + static_cast<std::ptrdiff_t>(keep), all.end(), r.child.begin());
        for (std::size_t k = 0; k < n.count; ++k) SetParent(n, n.child[k], nodeId);
        for (std::size_t k = 0; k < r.count; ++k) SetParent(r, r.child[k], right);
        Recount(nodeId);
        Recount(right);
        return right;
    }

    // Unlinks an empty leaf (not the last one) and the inner nodes it leaves without children.
    // The node stays in its pool, unused, until the sequence is cleared.
    void RemoveEmptyLeaf(NodeId leaf) {
        Leaf& l = LeafAt(leaf);
        if (l.prev != kNone) LeafAt(l.prev).next = l.next;
        if (l.next != kNone) LeafAt(l.next).prev = l.prev;
        if (m_first == leaf) m_first = l.next;
        NodeId child = leaf;
        NodeId node = l.parent;
        l.parent = l.prev = l.next = kNone;
        while (node != kNone) {
            Inner& n = InnerAt(node);
            const std::size_t slot = SlotOf(n, child);
            // The child held nothing, so the counts of the later children stay as they are.
            std::copy(n.child.begin() + static_cast<std::ptrdiff_t>(slot + 1),
                      n.child.begin() + static_cast<std::ptrdiff_t>(n.count),
                      n.child.begin() + static_cast<std::ptrdiff_t>(slot));
            std::copy(n.upto.begin() + static_cast<std::ptrdiff_t>(slot + 1),
                      n.upto.begin() + static_cast<std::ptrdiff_t>(n.count),
                      n.upto.begin() + static_cast<std::ptrdiff_t>(slot));
            --n.count;
            if (n.count > 0 || node == m_root) break;
            child = node;
            node = n.parent;
            InnerAt(child).parent = kNone;
        }
        // A root left with one inner child hands the root over to it.
        while (!InnerAt(m_root).leaves && InnerAt(m_root).count == 1) {
            m_root = InnerAt(m_root).child[0];
            InnerAt(m_root).parent = kNone;
        }
    }

    std::deque<Leaf> m_leaves;
    std::deque<Inner> m_inners;
    NodeId m_root = kNone;
    NodeId m_first = kNone;
    std::size_t m_size = 0;
    mutable Finger m_finger;
    mutable std::vector<T> m_flat;
    mutable bool m_flatFresh = false;
    mutable std::size_t m_readsSinceChange = 0;
};

}  // namespace kelaz
