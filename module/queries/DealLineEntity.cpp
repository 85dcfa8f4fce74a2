#include "module/queries/DealLineEntity.h"

#include <cmath>
#include <cstddef>

#include "host/db/OpenObject.h"
#include "host/ge/LineSeg2d.h"
#include "host/ge/Tol.h"
#include "suite/entities/KelAzDuct.h"
#include "suite/entities/KelAzEntity.h"
#include "suite/entities/KelAzLead.h"
#include "suite/entities/KelAzPipe.h"

namespace {

// Ends closer than this in a coordinate share it: level lines, lines along an axis, risers; and
// keys this close are the same key.
constexpr double kCoordTol = 0.0001;

AcGePoint2d Plan(const AcGePoint3d& p) { return AcGePoint2d(p.x, p.y); }

}  // namespace

CDealLineEntity::CDealLineEntity() { SetStyle(true, true, true); }

CDealLineEntity::~CDealLineEntity() = default;

void CDealLineEntity::SetStyle(bool axisParallel, bool risers, bool others) {
    m_wantAxisParallel = axisParallel;
    m_wantRisers = risers;
    m_wantOthers = others;
}

void CDealLineEntity::SetAllId(const AcDbObjectIdArray& ids) { m_allIds = ids; }

int CDealLineEntity::GetLineState(StandardData& rec, const AcDbObjectId& id) {
    KelAzEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return -1;
    AcGePoint3d start;
    AcGePoint3d end;
    double bulge = 0.0;
    if (const KelAzLead* lead = KelAzLead::cast(entity)) {
        lead->getStartPoint(start);
        lead->getEndPoint(end);
        bulge = lead->GetBulge();
    } else if (KelAzPipe::cast(entity) != nullptr || KelAzDuct::cast(entity) != nullptr) {
        // Pipes and ducts are always straight.
        const KelAzCurveEntity* curve = KelAzCurveEntity::cast(entity);
        curve->getStartPoint(start);
        curve->getEndPoint(end);
    }
    // Any other suite entity keeps both ends at the origin, and so joins class 0 with key 0.
    entity->close();

    rec.start = start;
    rec.end = end;
    rec.id = id;
    if (bulge != 0.0) {
        rec.key = 0.0;
        return kOther;
    }
    if (std::fabs(start.z - end.z) <= kCoordTol) {
        if (std::fabs(start.x - end.x) < kCoordTol) {
            rec.key = start.x;
            return kAlongY;
        }
        if (std::fabs(start.y - end.y) < kCoordTol) {
            rec.key = start.y;
            return kAlongX;
        }
        rec.key = 0.0;
        return kOther;
    }
    rec.key = 0.0;
    if (std::fabs(start.x - end.x) < kCoordTol && std::fabs(start.y - end.y) < kCoordTol) {
        return kRiser;
    }
    return kOther;
}

bool CDealLineEntity::Insert(const StandardData& rec, kelaz::LineRecordList& records, bool sorted) {
    if (!sorted || records.Size() == 0) {
        records.Append(rec);
        return true;
    }
    // The record goes before the last middle probed, not where the search range closes: a key
    // above all others lands before the last one. The lists are kept that way on purpose.
    std::ptrdiff_t lo = 0;
    auto hi = static_cast<std::ptrdiff_t>(records.Size()) - 1;
    std::ptrdiff_t mid = 0;
    while (hi >= lo) {
        mid = (lo + hi) / 2;
        if (records.KeyAt(static_cast<std::size_t>(mid)) - rec.key > kCoordTol) {
            hi = mid - 1;
        } else {
            lo = mid + 1;
        }
    }
    records.InsertAt(static_cast<std::size_t>(mid), rec);
    return true;
}

bool CDealLineEntity::Classify() {
    for (const AcDbObjectId& id : m_allIds) {
        StandardData rec;
        switch (GetLineState(rec, id)) {
            case kAlongY:
                if (m_wantAxisParallel) Insert(rec, m_alongY, true);
                break;
            case kAlongX:
                if (m_wantAxisParallel) Insert(rec, m_alongX, true);
                break;
            case kRiser:
                if (m_wantRisers) Insert(rec, m_risers, false);
                break;
            case kOther:
                if (m_wantOthers) Insert(rec, m_others, false);
                break;
            default:
                break;
        }
    }
    return true;
}

AcDbObjectIdArray CDealLineEntity::OrderFind(double key, const AcGePoint3d& pt,
                                             const kelaz::LineRecordList& records) {
    AcDbObjectIdArray found;
    const AcGePoint2d at = Plan(pt);
    std::ptrdiff_t lo = 0;
    auto hi = static_cast<std::ptrdiff_t>(records.Size()) - 1;
    std::ptrdiff_t hit = -1;
    while (lo <= hi) {
        const std::ptrdiff_t mid = (lo + hi) / 2;
        const double diff = records.KeyAt(static_cast<std::size_t>(mid)) - key;
        if (std::fabs(diff) < kCoordTol) {
            hit = mid;
            break;
        }
        if (diff < kCoordTol) {
            lo = mid + 1;
        } else {
            hi = mid - 1;
        }
    }
    if (hit < 0) return found;

    AcGeTol endTol;
    endTol.setEqualPoint(kCoordTol);
    const auto test = [&](std::ptrdiff_t i) {
        const StandardData& rec = records.At(static_cast<std::size_t>(i));
        if (at.isEqualTo(Plan(rec.start), endTol) || at.isEqualTo(Plan(rec.end), endTol)) {
            found.append(rec.id);
        }
    };
    const auto sameKey = [&](std::ptrdiff_t i) {
        return std::fabs(records.KeyAt(static_cast<std::size_t>(i)) - key) < kCoordTol;
    };
    test(hit);
    for (std::ptrdiff_t i = hit - 1; i >= 0 && sameKey(i); --i) test(i);
    const auto count = static_cast<std::ptrdiff_t>(records.Size());
    for (std::ptrdiff_t i = hit + 1; i < count && sameKey(i); ++i) test(i);
    return found;
}

AcDbObjectIdArray CDealLineEntity::OtherFind(const AcGePoint3d& pt,
                                             kelaz::LineRecordList& records) {
    AcDbObjectIdArray found;
    const AcGePoint2d at = Plan(pt);
    // Only lines whose plan box comes within the tolerance of the point can pass by it.
    for (const StandardData* rec : records.NearPoint(at, AcGeContext::gTol.equalPoint())) {
        if (AcGeLineSeg2d(Plan(rec->end), Plan(rec->start)).isOn(at)) found.append(rec->id);
    }
    return found;
}

AcDbObjectIdArray CDealLineEntity::FindEntity(const AcGePoint3d& pt) {
    AcDbObjectIdArray found = OrderFind(pt.x, pt, m_alongY);
    found.append(OrderFind(pt.y, pt, m_alongX));
    found.append(OtherFind(pt, m_risers));
    found.append(OtherFind(pt, m_others));
    return found;
}

bool CDealLineEntity::DeleteEntity(const AcDbObjectId& id) {
    StandardData rec;
    kelaz::LineRecordList* list = ListOf(GetLineState(rec, id));
    if (list == nullptr) return false;
    list->RemoveFirst(id);
    return true;
}

void CDealLineEntity::ClearInfo() {
    m_alongY.Clear();
    m_alongX.Clear();
    m_risers.Clear();
    m_others.Clear();
}

kelaz::LineRecordList* CDealLineEntity::ListOf(int lineClass) {
    switch (lineClass) {
        case kAlongY:
            return &m_alongY;
        case kAlongX:
            return &m_alongX;
        case kOther:
            return &m_others;
        case kRiser:
            return &m_risers;
        default:
            return nullptr;
    }
}

const kelaz::LineRecordList* CDealLineEntity::ListOf(int lineClass) const {
    return const_cast<CDealLineEntity*>(this)->ListOf(lineClass);
}

AcArray<StandardData> CDealLineEntity::GetRecords(int lineClass) const {
    const kelaz::LineRecordList* list = ListOf(lineClass);
    return list != nullptr ? list->Records() : AcArray<StandardData>();
}

AcDbObjectIdArray CDealLineEntity::GetIds(int lineClass) const {
    const kelaz::LineRecordList* list = ListOf(lineClass);
    return list != nullptr ? list->Ids() : AcDbObjectIdArray();
}
