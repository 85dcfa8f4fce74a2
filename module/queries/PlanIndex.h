#pragma once

// An R-tree of plan rectangles (XY), each carrying a handle of its owner's: the query lists use
// it to visit only the records near a point or a segment instead of all of them. The owner puts
// the hits back in its own order and tests them exactly; the index only narrows the search, so
// a box may be a little larger than the record (see Box::Of) but never smaller.

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "host/ge/Point2d.h"
#include "host/ge/Point3d.h"

namespace kelaz {

class PlanIndex {
public:
    // Boundaries included.
    struct Box {
        double minX = 0.0;
        double minY = 0.0;
        double maxX = 0.0;
        double maxY = 0.0;

        // The plan box of a segment (or of a point, when a == b), widened by the rounding a
        // distance computed from these coordinates may carry, so that every point the host's
        // segment tests call near the segment is near this box.
        static Box Of(const AcGePoint3d& a, const AcGePoint3d& b);
        static Box Of(const AcGePoint2d& a, const AcGePoint2d& b);
        // Grown by reach on every side, and by the rounding of a distance of that size.
        Box Grown(double reach) const;
        // A box with a coordinate that is not finite cannot be indexed or searched.
        bool IsFinite() const;
    };

    PlanIndex();
    ~PlanIndex();
    PlanIndex(const PlanIndex& other);
    PlanIndex& operator=(const PlanIndex& other);
    PlanIndex(PlanIndex&& other) noexcept;
    PlanIndex& operator=(PlanIndex&& other) noexcept;

    // Replaces the contents by a packed tree, faster to build and to search than one filled
    // entry by entry.
    void Rebuild(const std::vector<std::pair<Box, std::uint32_t>>& entries);
    void Insert(const Box& box, std::uint32_t handle);
    // The entry must be given with the box it was put in with; false when it is not there.
    bool Remove(const Box& box, std::uint32_t handle);
    void Clear();
    std::size_t Size() const;

    // Handles of the entries whose box meets the box, in no particular order, appended.
    void Query(const Box& box, std::vector<std::uint32_t>& out) const;

private:
    struct Tree;
    std::unique_ptr<Tree> m_tree;
};

}  // namespace kelaz
