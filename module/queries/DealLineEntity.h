#pragma once

// Sorts a set of leads, pipes and ducts by direction so that the lines connected to a point are
// found quickly: lines along Y (class 0, kept in order of their x) and along X (class 1, by
// their y) are found by a binary search on that coordinate and must end at the point; vertical
// risers (class 3) and all other lines (class 2) are found wherever they pass by the point in
// plan. The commands use it to find what a picked or computed point connects to.
//
// The sorted classes are filled one line at a time by a binary search whose insertion place is
// the last middle it probed, so they are only roughly in order, and every search runs on them as
// they are. Each class is therefore a counted B+ tree read and grown by position
// (kelaz::LineRecordList), which gives the searches exactly the probes an array would and makes
// classifying n lines O(n log^2 n) rather than the O(n^2) of array insertion; searches that
// follow one another without a change read an array copy of the list. Risers and other
// lines are searched through a plan R-tree of the lines, whose hits are put back in list order
// before the exact test, so a search visits the lines near the point only.

#include "host/db/ObjectId.h"
#include "host/ge/Point3d.h"
#include "host/text/Array.h"
#include "module/entry/LayoutApi.h"
#include "module/queries/LineRecordList.h"
#include "module/queries/StandardData.h"

class LAYOUT_API CDealLineEntity {
public:
    // The classes a line can fall in.
    enum LineClass { kAlongY = 0, kAlongX = 1, kOther = 2, kRiser = 3 };

    CDealLineEntity();
    ~CDealLineEntity();
    CDealLineEntity(const CDealLineEntity&) = default;
    CDealLineEntity& operator=(const CDealLineEntity&) = default;

    // Which classes Classify keeps: lines along the axes (classes 0 and 1), risers, others.
    void SetStyle(bool axisParallel, bool risers, bool others);
    void SetAllId(const AcDbObjectIdArray& ids);
    // Adds every line of the set to its class (the lists are not emptied first); always true.
    bool Classify();
    // The lines found at the point: those of class 0, then 1, then risers, then the others,
    // each class in its list order. A line listed twice is found twice.
    AcDbObjectIdArray FindEntity(const AcGePoint3d& pt);
    // Takes the line out of the class it falls in now. False only when it cannot be opened as a
    // suite entity; true, and nothing changes, when that class does not hold it.
    bool DeleteEntity(const AcDbObjectId& id);
    void ClearInfo();

    // A class's records and ids in list order (LineClass values), for checks and listings.
    AcArray<StandardData> GetRecords(int lineClass) const;
    AcDbObjectIdArray GetIds(int lineClass) const;

private:
    // The line's ends and class (-1 when it is no suite entity); the record's key as well.
    int GetLineState(StandardData& rec, const AcDbObjectId& id);
    // Appends, or with sorted puts the record where a binary search on the key ends.
    bool Insert(const StandardData& rec, kelaz::LineRecordList& records, bool sorted);
    // Lines of a sorted class whose key is key and that start or end at the point in plan.
    AcDbObjectIdArray OrderFind(double key, const AcGePoint3d& pt,
                                const kelaz::LineRecordList& records);
    // Lines that pass by the point in plan, under the host's tolerance.
    AcDbObjectIdArray OtherFind(const AcGePoint3d& pt, kelaz::LineRecordList& records);

    kelaz::LineRecordList* ListOf(int lineClass);
    const kelaz::LineRecordList* ListOf(int lineClass) const;

    // Each list carries the ids of its records alongside.
    kelaz::LineRecordList m_alongY;
    kelaz::LineRecordList m_alongX;
    kelaz::LineRecordList m_risers;
    kelaz::LineRecordList m_others;
    AcDbObjectIdArray m_allIds;
    bool m_wantAxisParallel = false;
    bool m_wantRisers = false;
    bool m_wantOthers = false;
};
