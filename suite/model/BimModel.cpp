#include "suite/model/BimModel.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "suite/data/FloorMng.h"
#include "suite/data/Proj.h"

namespace {

std::unique_ptr<KelAzBimModel>& Instance() {
    static std::unique_ptr<KelAzBimModel> instance;
    return instance;
}

int& Builds() {
    static int builds = 0;
    return builds;
}

void AddStorey(std::vector<KelAzStorey>& storeys, const CString& name, double elevation,
               double height) {
    storeys.push_back(
        {name, std::min(elevation, elevation + height), std::max(elevation, elevation + height)});
}

}  // namespace

const KelAzStorey* KelAzBimModel::StoreyAt(double elevation) const {
    for (const KelAzStorey& s : m_storeys) {
        if (elevation >= s.dBottom && elevation < s.dTop) return &s;
    }
    return nullptr;
}

bool KelAzBimModel::BuildStoreys(std::vector<KelAzStorey>& storeys) {
    CArray<KelAzDataMng::FloorRecord> rows;
    if (!KelAzDataMng::CProj::GetAllFloorData(rows)) return false;
    std::vector<KelAzStorey> out;
    for (const KelAzDataMng::FloorRecord& row : rows) {
        long first = 0, last = 0;
        if (kelaz::FloorRangeEnds(row.strName, first, last) && first <= last) {
            for (long n = first; n <= last; ++n) {
                CString name;
                name.Format(L"%ld", n);
                AddStorey(out, name, row.dElevation + (n - first) * row.dHeight, row.dHeight);
            }
        } else if (row.strName.Find(L',') >= 0) {
            int from = 0;
            while (from <= row.strName.GetLength()) {
                int comma = row.strName.Find(L',', from);
                if (comma < 0) comma = row.strName.GetLength();
                const CString name = row.strName.Mid(from, comma - from);
                KelAzDataMng::FloorRecord own;
                if (!name.IsEmpty() &&
                    KelAzDataMng::IFloorMng::GetSeperateFloorRecordByFloorName(name, own, false))
                    AddStorey(out, name, own.dElevation, own.dHeight);
                from = comma + 1;
            }
        } else {
            AddStorey(out, row.strName, row.dElevation, row.dHeight);
        }
    }
    std::stable_sort(out.begin(), out.end(), [](const KelAzStorey& a, const KelAzStorey& b) {
        return a.dBottom < b.dBottom;
    });
    storeys = std::move(out);
    return true;
}

KelAzBimModel* pGetBimInstance() {
    std::unique_ptr<KelAzBimModel>& instance = Instance();
    if (instance) return instance.get();
    auto model = std::make_unique<KelAzBimModel>();
    if (!KelAzBimModel::BuildStoreys(model->m_storeys)) return nullptr;
    model->m_generation = ++Builds();
    instance = std::move(model);
    return instance.get();
}

void pDeleteBimInstance() { Instance().reset(); }

bool HasBimInstance() { return Instance() != nullptr; }
