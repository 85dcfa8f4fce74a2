#include "module/queries/DealPunEntity.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "host/db/OpenObject.h"
#include "host/ed/EditorInput.h"
#include "host/ge/LineSeg2d.h"
#include "host/ge/Tol.h"
#include "suite/entities/KelAzNode.h"

namespace {

// Coordinates closer than this are the same coordinate in the bands.
constexpr double kSameCoord = 1e-6;
// A flat point this close to a segment in plan stands on it.
constexpr double kOnSegment = 10.0;
// Upper heights of the bands. The band up to 300 lies below the band up to 1000 it is tested
// after, so it never receives a point.
constexpr double kBand1000 = 1000.0;
constexpr double kBand2000 = 2000.0;
constexpr double kBand300 = 300.0;

// x, then y, then z, with kSameCoord as equality: <0, 0 or >0 as a comes before, with or after b.
int Compare(const AcGePoint3d& a, const AcGePoint3d& b) {
    for (unsigned int i = 0; i < 3; ++i) {
        const double diff = a[i] - b[i];
        if (std::fabs(diff) >= kSameCoord) return diff < 0.0 ? -1 : 1;
    }
    return 0;
}

AcGePoint2d Plan(const AcGePoint3d& p) { return AcGePoint2d(p.x, p.y); }

template <class Sequence>
AcGePoint3dArray ToArray(const Sequence& points) {
    AcGePoint3dArray out(static_cast<int>(points.size()));
    points.forEach([&out](const AcGePoint3d& p) { out.append(p); });
    return out;
}

}  // namespace

CDealPunEntity::CDealPunEntity(const AcDbObjectIdArray& ids) : m_ids(ids) {}

void CDealPunEntity::SetIdArray(const AcDbObjectIdArray& ids) { m_ids = ids; }

void CDealPunEntity::ClearInfo() {
    m_flat.clear();
    m_flatLive.clear();
    m_flatIndexed = false;
    m_flatPackedAt = 0;
    m_flatIndex.Clear();
    m_upTo1000.clear();
    m_upTo2000.clear();
    m_upTo300.clear();
    m_above.clear();
}

bool CDealPunEntity::Deal(bool flat) { return GetAllPoint(flat); }

bool CDealPunEntity::GetAllPoint(bool flat) {
    if (m_ids.isEmpty()) return false;
    for (const AcDbObjectId& id : m_ids) {
        KelAzNode* node = nullptr;
        if (acdbOpenObject(node, id, AcDb::kForRead) != Acad::eOk) continue;
        const AcGePoint3d p = node->GetInsertPoint();
        node->close();
        if (flat) {
            AppendFlat(p);
        } else if (p.z <= kBand1000) {
            AddPoint(m_upTo1000, p);
        } else if (p.z > kBand1000 && p.z <= kBand2000) {
            AddPoint(m_upTo2000, p);
        } else if (p.z > kBand2000 && p.z <= kBand300) {
            AddPoint(m_upTo300, p);
        } else {
            AddPoint(m_above, p);
        }
    }
    return true;
}

bool CDealPunEntity::AddPoint(Sorted& band, const AcGePoint3d& p) {
    std::ptrdiff_t lo = 0;
    auto hi = static_cast<std::ptrdiff_t>(band.size()) - 1;
    while (lo <= hi) {
        const std::ptrdiff_t mid = (lo + hi) / 2;
        const int order = Compare(band[static_cast<std::size_t>(mid)], p);
        if (order == 0) {
            band.insert(static_cast<std::size_t>(mid), p);
            return true;
        }
        if (order < 0) {
            lo = mid + 1;
        } else {
            hi = mid - 1;
        }
    }
    band.insert(static_cast<std::size_t>(lo), p);
    return true;
}

bool CDealPunEntity::HasEntity(const AcGePoint3d& p) const {
    // The lookup allows 1e-6 over each band's top, which filing does not: a point just above
    // 1000 is filed up to 2000 and looked for up to 1000.
    const Sorted* band = &m_above;
    if (p.z - kBand1000 <= kSameCoord) {
        band = &m_upTo1000;
    } else if (p.z - kBand2000 <= kSameCoord) {
        band = &m_upTo2000;
    } else if (p.z - kBand300 <= kSameCoord) {
        band = &m_upTo300;
    }
    std::ptrdiff_t lo = 0;
    auto hi = static_cast<std::ptrdiff_t>(band->size()) - 1;
    while (lo <= hi) {
        const std::ptrdiff_t mid = (lo + hi) / 2;
        const int order = Compare((*band)[static_cast<std::size_t>(mid)], p);
        if (order == 0) return true;
        if (order < 0) {
            lo = mid + 1;
        } else {
            hi = mid - 1;
        }
    }
    return false;
}

void CDealPunEntity::AppendFlat(const AcGePoint3d& p) {
    const auto handle = static_cast<std::uint32_t>(m_flat.size());
    m_flat.push_back(p);
    m_flatLive.push_back(true);
    if (!m_flatIndexed) return;
    // Point by point while the list has not grown much since the tree was packed; a large batch
    // is cheaper to pack again at the next search.
    if (m_flat.size() > 2 * m_flatPackedAt + 1024) {
        m_flatIndex.Clear();
        m_flatIndexed = false;
        return;
    }
    const kelaz::PlanIndex::Box box = kelaz::PlanIndex::Box::Of(p, p);
    if (box.IsFinite()) m_flatIndex.Insert(box, handle);
}

void CDealPunEntity::IndexFlat() {
    std::vector<std::pair<kelaz::PlanIndex::Box, std::uint32_t>> entries;
    entries.reserve(m_flat.size());
    for (std::size_t h = 0; h < m_flat.size(); ++h) {
        if (!m_flatLive[h]) continue;
        const kelaz::PlanIndex::Box box = kelaz::PlanIndex::Box::Of(m_flat[h], m_flat[h]);
        // A point with a coordinate that is not a finite number stands on no segment.
        if (box.IsFinite()) entries.emplace_back(box, static_cast<std::uint32_t>(h));
    }
    m_flatIndex.Rebuild(entries);
    m_flatIndexed = true;
    m_flatPackedAt = m_flat.size();
}

bool CDealPunEntity::HasEntity(AcGePoint3dArray& out, const AcGePoint3d& a, const AcGePoint3d& b) {
    const AcGeLineSeg2d segment(Plan(a), Plan(b));
    AcGeTol tol;
    tol.setEqualPoint(kOnSegment);
    const auto test = [&](std::size_t h) {
        if (segment.isOn(Plan(m_flat[h]), tol)) out.append(m_flat[h]);
    };
    const kelaz::PlanIndex::Box near = kelaz::PlanIndex::Box::Of(a, b).Grown(kOnSegment);
    if (!near.IsFinite()) {
        for (std::size_t h = 0; h < m_flat.size(); ++h) {
            if (m_flatLive[h]) test(h);
        }
        return true;
    }
    if (!m_flatIndexed) IndexFlat();
    std::vector<std::uint32_t> hits;
    m_flatIndex.Query(near, hits);
    std::sort(hits.begin(), hits.end());
    for (const std::uint32_t h : hits) test(h);
    return true;
}

bool CDealPunEntity::DeletePoint(const AcGePoint3d& p, bool flag) {
    if (!flag) return true;
    std::size_t first = m_flat.size();
    const kelaz::PlanIndex::Box near =
        kelaz::PlanIndex::Box::Of(p, p).Grown(AcGeContext::gTol.equalPoint());
    if (m_flatIndexed && near.IsFinite()) {
        std::vector<std::uint32_t> hits;
        m_flatIndex.Query(near, hits);
        for (const std::uint32_t h : hits) {
            if (h < first && m_flat[h].isEqualTo(p)) first = h;
        }
    } else {
        for (std::size_t h = 0; h < m_flat.size(); ++h) {
            if (m_flatLive[h] && m_flat[h].isEqualTo(p)) {
                first = h;
                break;
            }
        }
    }
    if (first == m_flat.size()) return true;
    m_flatLive[first] = false;
    if (m_flatIndexed) {
        const kelaz::PlanIndex::Box box = kelaz::PlanIndex::Box::Of(m_flat[first], m_flat[first]);
        if (box.IsFinite()) m_flatIndex.Remove(box, static_cast<std::uint32_t>(first));
    }
    return true;
}

bool CDealPunEntity::TestFunction(const AcGePoint3dArray& points) {
    for (const AcGePoint3d& p : points) AddPoint(m_above, p);
    m_upTo300.forEach([](const AcGePoint3d& p) { acutPrintf(L"point:%g, %g, %g", p.x, p.y, p.z); });
    return true;
}

AcGePoint3dArray CDealPunEntity::GetAllPoints() const {
    AcGePoint3dArray out;
    for (std::size_t h = 0; h < m_flat.size(); ++h) {
        if (m_flatLive[h]) out.append(m_flat[h]);
    }
    return out;
}

AcGePoint3dArray CDealPunEntity::GetBandPoints(int band) const {
    switch (band) {
        case kUpTo1000:
            return ToArray(m_upTo1000);
        case kUpTo2000:
            return ToArray(m_upTo2000);
        case kUpTo300:
            return ToArray(m_upTo300);
        case kAbove:
            return ToArray(m_above);
        default:
            return AcGePoint3dArray();
    }
}
