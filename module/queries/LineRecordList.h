#pragma once

// One class of lines of CDealLineEntity, in its list order, with its ids alongside. The records
// stay where they were first stored (a handle is their place in that store); the order lives in
// a counted sequence of (key, handle), so that a binary search by position reads keys as it
// would from an array while inserting before a position costs O(log n). Two lookups are built
// only when first needed: ids to handles (for removing a line) and a plan R-tree of the records
// (for the lines through a point), both kept up to date once built.

#include <cstddef>
#include <cstdint>
#include <deque>
#include <unordered_map>
#include <vector>

#include "host/text/Array.h"
#include "module/queries/CountedSequence.h"
#include "module/queries/PlanIndex.h"
#include "module/queries/StandardData.h"

namespace kelaz {

class LineRecordList {
public:
    std::size_t Size() const { return m_order.size(); }
    double KeyAt(std::size_t i) const { return m_order[i].key; }
    const StandardData& At(std::size_t i) const { return m_store[m_order[i].handle]; }

    // Before index i; i == Size() appends.
    void InsertAt(std::size_t i, const StandardData& rec);
    void Append(const StandardData& rec) { InsertAt(Size(), rec); }
    // Removes the record of the id that comes first in the list; false when there is none.
    bool RemoveFirst(const AcDbObjectId& id);
    void Clear();

    // The records whose plan box, widened by reach, holds the plan point, in list order.
    // Candidates only: the caller decides which of them really pass by the point.
    std::vector<const StandardData*> NearPoint(const AcGePoint2d& pt, double reach);

    AcArray<StandardData> Records() const;
    AcDbObjectIdArray Ids() const;

private:
    using Handle = std::uint32_t;
    static constexpr Handle kNoHandle = ~Handle{0};
    struct Entry {
        double key = 0.0;
        Handle handle = 0;
    };
    using Sequence = CountedSequence<Entry>;

    // Where a record in the list sits: its leaf and its offset there.
    void PlaceOf(Handle h, Sequence::NodeId& leaf, std::size_t& offset) const;
    std::size_t IndexOf(Handle h) const;
    void MapIds();
    void BuildPlan();

    Sequence m_order;
    std::deque<StandardData> m_store;
    // The leaf of each stored record; kNone once it has left the list.
    std::vector<Sequence::NodeId> m_leafOf;
    // While every record went to the end of the list, list order is store order.
    bool m_appendedOnly = true;

    // The records of one id form a chain through m_nextSameId, oldest first.
    struct Chain {
        Handle first = kNoHandle;
        Handle last = kNoHandle;
    };
    bool m_idsMapped = false;
    std::unordered_map<AcDbObjectId, Chain> m_chains;
    std::vector<Handle> m_nextSameId;

    bool m_planBuilt = false;
    std::size_t m_planPackedAt = 0;
    PlanIndex m_plan;
};

}  // namespace kelaz
