#pragma once

// The R-tree of model space: every entity that is not erased, by its extents in plan (XY). The
// database keeps it current on append, write close, erase, undo and load.

#include <memory>
#include <vector>

#include "host/db/Stub.h"

namespace kelaz {

class SpatialIndex {
public:
    SpatialIndex();
    ~SpatialIndex();
    SpatialIndex(const SpatialIndex&) = delete;
    SpatialIndex& operator=(const SpatialIndex&) = delete;

    // Puts the stub under box, replacing the box it had.
    void update(AcDbStub* stub, const PlanBox& box);
    void remove(AcDbStub* stub);
    // Replaces the whole contents at once (a packed tree, faster to build and to query).
    void rebuild(const std::vector<AcDbStub*>& stubs);
    void clear();
    std::size_t size() const;

    // Stubs whose box meets the query box (boundaries included), in no particular order.
    void queryIntersects(const PlanBox& box, std::vector<AcDbStub*>& out) const;
    // Stubs whose box lies inside the query box (boundaries included).
    void queryCoveredBy(const PlanBox& box, std::vector<AcDbStub*>& out) const;

private:
    struct Tree;
    std::unique_ptr<Tree> m_tree;
};

}  // namespace kelaz
