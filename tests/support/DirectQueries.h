#pragma once

// The drawing queries of CDealPunEntity and CDealLineEntity written the plain way, on
// std::vector: each insertion moves the rest of the array and every search visits the whole
// list where the rules say so. Tests compare the module's lists and answers with these, element
// by element; the benchmarks time them beside the module. Kept free of test frameworks so that
// both can include it.

#include <cmath>
#include <cstddef>
#include <vector>

#include "host/db/ObjectId.h"
#include "host/db/OpenObject.h"
#include "host/ge/LineSeg2d.h"
#include "host/ge/Point3d.h"
#include "host/ge/Tol.h"
#include "module/queries/StandardData.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzNode.h"
#include "suite/entities/KelAzPipe.h"

namespace kelaz::test {

struct DirectPunEntity {
    std::vector<AcGePoint3d> all, upTo1000, upTo2000, upTo300, above;

    static int Compare(const AcGePoint3d& a, const AcGePoint3d& b) {
        const double da[3] = {a.x - b.x, a.y - b.y, a.z - b.z};
        for (double d : da) {
            if (std::fabs(d) >= 1e-6) return d < 0 ? -1 : 1;
        }
        return 0;
    }

    static void AddPoint(std::vector<AcGePoint3d>& band, const AcGePoint3d& p) {
        long lo = 0, hi = static_cast<long>(band.size()) - 1;
        while (lo <= hi) {
            const long mid = (lo + hi) / 2;
            const int c = Compare(band[static_cast<std::size_t>(mid)], p);
            if (c == 0) {
                band.insert(band.begin() + mid, p);
                return;
            }
            if (c < 0) {
                lo = mid + 1;
            } else {
                hi = mid - 1;
            }
        }
        band.insert(band.begin() + lo, p);
    }

    bool Deal(const AcDbObjectIdArray& ids, bool flat) {
        if (ids.isEmpty()) return false;
        for (const AcDbObjectId& id : ids) {
            KelAzNode* node = nullptr;
            if (acdbOpenObject(node, id, AcDb::kForRead) != Acad::eOk) continue;
            const AcGePoint3d p = node->GetInsertPoint();
            node->close();
            if (flat) {
                all.push_back(p);
            } else if (p.z <= 1000) {
                AddPoint(upTo1000, p);
            } else if (p.z <= 2000) {
                AddPoint(upTo2000, p);
            } else {
                AddPoint(above, p);
            }
        }
        return true;
    }

    bool HasEntity(const AcGePoint3d& p) const {
        const std::vector<AcGePoint3d>& band = p.z - 1000 <= 1e-6   ? upTo1000
                                               : p.z - 2000 <= 1e-6 ? upTo2000
                                               : p.z - 300 <= 1e-6  ? upTo300
                                                                    : above;
        long lo = 0, hi = static_cast<long>(band.size()) - 1;
        while (lo <= hi) {
            const long mid = (lo + hi) / 2;
            const int c = Compare(band[static_cast<std::size_t>(mid)], p);
            if (c == 0) return true;
            if (c < 0) {
                lo = mid + 1;
            } else {
                hi = mid - 1;
            }
        }
        return false;
    }

    std::vector<AcGePoint3d> OnSegment(const AcGePoint3d& a, const AcGePoint3d& b) const {
        AcGeTol tol;
        tol.setEqualPoint(10.0);
        const AcGeLineSeg2d seg(AcGePoint2d(a.x, a.y), AcGePoint2d(b.x, b.y));
        std::vector<AcGePoint3d> out;
        for (const AcGePoint3d& p : all) {
            if (seg.isOn(AcGePoint2d(p.x, p.y), tol)) out.push_back(p);
        }
        return out;
    }

    void DeletePoint(const AcGePoint3d& p) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (all[i].isEqualTo(p)) {
                all.erase(all.begin() + static_cast<long>(i));
                return;
            }
        }
    }
};

struct DirectLineEntity {
    // By class number: along Y, along X, others, risers.
    std::vector<StandardData> lists[4];
    bool axisParallel = true, risers = true, others = true;

    static int LineState(StandardData& rec, const AcDbObjectId& id) {
        KelAzEntity* ent = nullptr;
        if (acdbOpenObject(ent, id, AcDb::kForRead) != Acad::eOk) return -1;
        AcGePoint3d s, e;
        double bulge = 0;
        if (KelAzLead* lead = KelAzLead::cast(ent)) {
            lead->getStartPoint(s);
            lead->getEndPoint(e);
            bulge = lead->GetBulge();
        } else if (KelAzPipe* pipe = KelAzPipe::cast(ent)) {
            pipe->getStartPoint(s);
            pipe->getEndPoint(e);
        } else if (KelAzDuct* duct = KelAzDuct::cast(ent)) {
            duct->getStartPoint(s);
            duct->getEndPoint(e);
        }
        ent->close();
        rec.start = s;
        rec.end = e;
        rec.id = id;
        rec.key = 0;
        if (bulge != 0) return 2;
        if (std::fabs(s.z - e.z) <= 0.0001) {
            if (std::fabs(s.x - e.x) < 0.0001) {
                rec.key = s.x;
                return 0;
            }
            if (std::fabs(s.y - e.y) < 0.0001) {
                rec.key = s.y;
                return 1;
            }
            return 2;
        }
        if (std::fabs(s.x - e.x) < 0.0001 && std::fabs(s.y - e.y) < 0.0001) return 3;
        return 2;
    }

    static void Insert(const StandardData& rec, std::vector<StandardData>& list, bool sorted) {
        if (!sorted || list.empty()) {
            list.push_back(rec);
            return;
        }
        long lo = 0, hi = static_cast<long>(list.size()) - 1, mid = 0;
        while (hi >= lo) {
            mid = (lo + hi) / 2;
            if (list[static_cast<std::size_t>(mid)].key - rec.key > 0.0001) {
                hi = mid - 1;
            } else {
                lo = mid + 1;
            }
        }
        list.insert(list.begin() + mid, rec);
    }

    void Classify(const AcDbObjectIdArray& ids) {
        for (const AcDbObjectId& id : ids) {
            StandardData rec;
            const int cls = LineState(rec, id);
            if ((cls == 0 || cls == 1) && axisParallel) Insert(rec, lists[cls], true);
            if (cls == 3 && risers) Insert(rec, lists[3], false);
            if (cls == 2 && others) Insert(rec, lists[2], false);
        }
    }

    static AcDbObjectIdArray OrderFind(double key, const AcGePoint3d& pt,
                                       const std::vector<StandardData>& list) {
        AcDbObjectIdArray out;
        const AcGePoint2d p(pt.x, pt.y);
        long lo = 0, hi = static_cast<long>(list.size()) - 1;
        while (lo <= hi) {
            const long mid = (lo + hi) / 2;
            const double d = list[static_cast<std::size_t>(mid)].key - key;
            if (std::fabs(d) < 0.0001) {
                AcGeTol tol;
                tol.setEqualPoint(0.0001);
                const auto test = [&](long i) {
                    const StandardData& r = list[static_cast<std::size_t>(i)];
                    if (p.isEqualTo(AcGePoint2d(r.start.x, r.start.y), tol) ||
                        p.isEqualTo(AcGePoint2d(r.end.x, r.end.y), tol)) {
                        out.append(r.id);
                    }
                };
                test(mid);
                for (long i = mid - 1;
                     i >= 0 && std::fabs(list[static_cast<std::size_t>(i)].key - key) < 0.0001;
                     --i) {
                    test(i);
                }
                for (long i = mid + 1;
                     i < static_cast<long>(list.size()) &&
                     std::fabs(list[static_cast<std::size_t>(i)].key - key) < 0.0001;
                     ++i) {
                    test(i);
                }
                return out;
            }
            if (d < 0.0001) {
                lo = mid + 1;
            } else {
                hi = mid - 1;
            }
        }
        return out;
    }

    static AcDbObjectIdArray OtherFind(const AcGePoint3d& pt,
                                       const std::vector<StandardData>& list) {
        AcDbObjectIdArray out;
        const AcGePoint2d p(pt.x, pt.y);
        for (const StandardData& r : list) {
            const AcGeLineSeg2d seg(AcGePoint2d(r.end.x, r.end.y),
                                    AcGePoint2d(r.start.x, r.start.y));
            if (seg.isOn(p)) out.append(r.id);
        }
        return out;
    }

    AcDbObjectIdArray FindEntity(const AcGePoint3d& pt) const {
        AcDbObjectIdArray out = OrderFind(pt.x, pt, lists[0]);
        out.append(OrderFind(pt.y, pt, lists[1]));
        out.append(OtherFind(pt, lists[3]));
        out.append(OtherFind(pt, lists[2]));
        return out;
    }

    bool DeleteEntity(const AcDbObjectId& id) {
        StandardData rec;
        const int cls = LineState(rec, id);
        if (cls < 0) return false;
        std::vector<StandardData>& list = lists[cls];
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (list[i].id == id) {
                list.erase(list.begin() + static_cast<long>(i));
                break;
            }
        }
        return true;
    }
};

}  // namespace kelaz::test
