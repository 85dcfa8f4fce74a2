#include "module/queries/LineRecordList.h"

#include <algorithm>
#include <utility>

namespace kelaz {

namespace {

PlanIndex::Box PlanBoxOf(const StandardData& rec) { return PlanIndex::Box::Of(rec.start, rec.end); }

}  // namespace

void LineRecordList::InsertAt(std::size_t i, const StandardData& rec) {
    KELAZ_ASSERT(m_store.size() < kNoHandle, "too many lines in one class");
    const auto h = static_cast<Handle>(m_store.size());
    if (i != Size()) m_appendedOnly = false;
    m_store.push_back(rec);
    m_leafOf.push_back(Sequence::kNone);
    m_order.insert(i, Entry{rec.key, h},
                   [this](const Entry& e, Sequence::NodeId leaf) { m_leafOf[e.handle] = leaf; });

    if (m_idsMapped) {
        m_nextSameId.push_back(kNoHandle);
        Chain& chain = m_chains[rec.id];
        if (chain.first == kNoHandle) {
            chain.first = h;
        } else {
            m_nextSameId[chain.last] = h;
        }
        chain.last = h;
    }
    if (m_planBuilt) {
        // Entry by entry while the list has not grown much since the tree was packed; a large
        // batch is cheaper to pack again at the next search.
        if (Size() > 2 * m_planPackedAt + 1024) {
            m_plan.Clear();
            m_planBuilt = false;
        } else if (const PlanIndex::Box box = PlanBoxOf(rec); box.IsFinite()) {
            m_plan.Insert(box, h);
        }
    }
}

void LineRecordList::PlaceOf(Handle h, Sequence::NodeId& leaf, std::size_t& offset) const {
    leaf = m_leafOf[h];
    const auto items = m_order.leafItems(leaf);
    const auto it =
        std::find_if(items.begin(), items.end(), [h](const Entry& e) { return e.handle == h; });
    KELAZ_ASSERT(it != items.end(), "line record missing from its leaf");
    offset = static_cast<std::size_t>(it - items.begin());
}

std::size_t LineRecordList::IndexOf(Handle h) const {
    Sequence::NodeId leaf = Sequence::kNone;
    std::size_t offset = 0;
    PlaceOf(h, leaf, offset);
    return m_order.indexOf(leaf, offset);
}

void LineRecordList::MapIds() {
    m_chains.clear();
    m_chains.reserve(Size());
    m_nextSameId.assign(m_store.size(), kNoHandle);
    for (Handle h = 0; h < m_store.size(); ++h) {
        if (m_leafOf[h] == Sequence::kNone) continue;
        Chain& chain = m_chains[m_store[h].id];
        if (chain.first == kNoHandle) {
            chain.first = h;
        } else {
            m_nextSameId[chain.last] = h;
        }
        chain.last = h;
    }
    m_idsMapped = true;
}

bool LineRecordList::RemoveFirst(const AcDbObjectId& id) {
    if (!m_idsMapped) MapIds();
    const auto found = m_chains.find(id);
    if (found == m_chains.end()) return false;
    Chain& chain = found->second;

    // The oldest record comes first unless records were put before others; then ask the list.
    Handle chosen = chain.first;
    Handle beforeChosen = kNoHandle;
    if (!m_appendedOnly && chain.first != chain.last) {
        std::size_t best = IndexOf(chosen);
        for (Handle prev = chain.first, h = m_nextSameId[chain.first]; h != kNoHandle;
             prev = h, h = m_nextSameId[h]) {
            const std::size_t index = IndexOf(h);
            if (index < best) {
                best = index;
                chosen = h;
                beforeChosen = prev;
            }
        }
    }
    const Handle after = m_nextSameId[chosen];
    if (beforeChosen == kNoHandle) {
        chain.first = after;
    } else {
        m_nextSameId[beforeChosen] = after;
    }
    if (chain.last == chosen) chain.last = beforeChosen;
    m_nextSameId[chosen] = kNoHandle;
    if (chain.first == kNoHandle) m_chains.erase(found);

    Sequence::NodeId leaf = Sequence::kNone;
    std::size_t offset = 0;
    PlaceOf(chosen, leaf, offset);
    m_order.eraseAt(leaf, offset);
    m_leafOf[chosen] = Sequence::kNone;
    if (m_planBuilt) {
        if (const PlanIndex::Box box = PlanBoxOf(m_store[chosen]); box.IsFinite()) {
            m_plan.Remove(box, chosen);
        }
    }
    return true;
}

void LineRecordList::Clear() {
    m_order.clear();
    m_store.clear();
    m_leafOf.clear();
    m_appendedOnly = true;
    m_idsMapped = false;
    m_chains.clear();
    m_nextSameId.clear();
    m_planBuilt = false;
    m_planPackedAt = 0;
    m_plan.Clear();
}

void LineRecordList::BuildPlan() {
    std::vector<std::pair<PlanIndex::Box, std::uint32_t>> entries;
    entries.reserve(Size());
    for (Handle h = 0; h < m_store.size(); ++h) {
        if (m_leafOf[h] == Sequence::kNone) continue;
        const PlanIndex::Box box = PlanBoxOf(m_store[h]);
        // A line with a coordinate that is not a finite number passes by no point.
        if (box.IsFinite()) entries.emplace_back(box, h);
    }
    m_plan.Rebuild(entries);
    m_planBuilt = true;
    m_planPackedAt = Size();
}

std::vector<const StandardData*> LineRecordList::NearPoint(const AcGePoint2d& pt, double reach) {
    std::vector<const StandardData*> out;
    const PlanIndex::Box around = PlanIndex::Box::Of(pt, pt).Grown(reach);
    if (!around.IsFinite()) {
        // Nothing to narrow the search by: every record is a candidate.
        out.reserve(Size());
        m_order.forEach([&](const Entry& e) { out.push_back(&m_store[e.handle]); });
        return out;
    }
    if (!m_planBuilt) BuildPlan();
    std::vector<Handle> hits;
    m_plan.Query(around, hits);
    if (m_appendedOnly) {
        std::sort(hits.begin(), hits.end());
    } else {
        std::vector<std::pair<std::size_t, Handle>> ranked;
        ranked.reserve(hits.size());
        for (Handle h : hits) ranked.emplace_back(IndexOf(h), h);
        std::sort(ranked.begin(), ranked.end());
        for (std::size_t k = 0; k < ranked.size(); ++k) hits[k] = ranked[k].second;
    }
    out.reserve(hits.size());
    for (Handle h : hits) out.push_back(&m_store[h]);
    return out;
}

AcArray<StandardData> LineRecordList::Records() const {
    AcArray<StandardData> out(static_cast<int>(Size()));
    m_order.forEach([&](const Entry& e) { out.append(m_store[e.handle]); });
    return out;
}

AcDbObjectIdArray LineRecordList::Ids() const {
    AcDbObjectIdArray out(static_cast<int>(Size()));
    m_order.forEach([&](const Entry& e) { out.append(m_store[e.handle].id); });
    return out;
}

}  // namespace kelaz
