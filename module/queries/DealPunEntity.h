#pragma once

// Answers whether a point component already stands at a point, or which ones stand along a
// segment, for a given set of point components. The insertion points are read once: into one
// flat list in the order of the ids, or into height bands kept sorted (x, then y, then z, with
// coordinates within 1e-6 counting as equal) for a binary search.
//
// Each band is a counted B+ tree read and grown by position (kelaz::CountedSequence): the binary
// search makes the same probes it would make on an array, equal points included, while putting
// a point in costs O(log n) instead of moving the rest of an array, so reading n components is
// O(n log^2 n); the lookups that follow read an array copy of the band. The flat list keeps its
// points in order and, once asked for the points along a segment, a plan R-tree of them: only the
// points near the segment are tested, in list order.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/db/ObjectId.h"
#include "host/ge/GeArrays.h"
#include "host/ge/Point3d.h"
#include "module/entry/LayoutApi.h"
#include "module/queries/CountedSequence.h"
#include "module/queries/PlanIndex.h"

class LAYOUT_API CDealPunEntity {
public:
    // The height bands, for GetBandPoints.
    enum Band { kUpTo1000 = 0, kUpTo2000 = 1, kUpTo300 = 2, kAbove = 3 };

    CDealPunEntity() = default;
    explicit CDealPunEntity(const AcDbObjectIdArray& ids);
    CDealPunEntity(const CDealPunEntity&) = default;
    CDealPunEntity& operator=(const CDealPunEntity&) = default;
    ~CDealPunEntity() = default;

    void SetIdArray(const AcDbObjectIdArray& ids);
    // Empties the lists; the ids stay.
    void ClearInfo();
    // Reads the insertion points of the components (flat, or into the bands), adding to what
    // the lists hold. False when there are no ids.
    bool Deal(bool flat);
    // Is the point one of the banded points (within 1e-6 in every coordinate)?
    bool HasEntity(const AcGePoint3d& p) const;
    // Appends to out the flat points that lie, in plan, within 10 of the segment a-b, in list
    // order; true.
    bool HasEntity(AcGePoint3dArray& out, const AcGePoint3d& a, const AcGePoint3d& b);
    // With flag, takes the first flat point equal to p out of the list; always true.
    bool DeletePoint(const AcGePoint3d& p, bool flag);
    // Puts the points in the band above and lists the band up to 300 on the command line (a
    // diagnostic); true.
    bool TestFunction(const AcGePoint3dArray& points);

    // The flat points and the points of a band, in list order.
    AcGePoint3dArray GetAllPoints() const;
    AcGePoint3dArray GetBandPoints(int band) const;

private:
    using Sorted = kelaz::CountedSequence<AcGePoint3d>;

    bool GetAllPoint(bool flat);
    // Puts p where the binary search ends, before an equal point when one is met.
    bool AddPoint(Sorted& band, const AcGePoint3d& p);
    void AppendFlat(const AcGePoint3d& p);
    void IndexFlat();

    // The flat points stay where they were first stored, so that list order is store order;
    // a point taken out is only marked.
    std::vector<AcGePoint3d> m_flat;
    std::vector<bool> m_flatLive;
    bool m_flatIndexed = false;
    std::size_t m_flatPackedAt = 0;
    kelaz::PlanIndex m_flatIndex;

    Sorted m_upTo1000;
    Sorted m_upTo2000;
    // By the band rules nothing is ever filed here.
    Sorted m_upTo300;
    Sorted m_above;
    AcDbObjectIdArray m_ids;
};
