#include "suite/data/FloorMng.h"

#include "suite/data/CurrentProject.h"
#include "suite/data/ProjectDb.h"

namespace {

using KelAzDataMng::FloorRecord;

// Floor numbers in names are whole numbers, optionally negative for basements.
bool ParseFloorNumber(const CString& text, long& number) {
    const int start = text.GetLength() > 0 && text[0] == L'-' ? 1 : 0;
    if (text.GetLength() == start || text.GetLength() > start + 6) return false;
    long v = 0;
    for (int i = start; i < text.GetLength(); ++i) {
        if (text[i] < L'0' || text[i] > L'9') return false;
        v = v * 10 + (text[i] - L'0');
    }
    number = start ? -v : v;
    return true;
}

bool ByName(kelaz::SqliteDb& db, const char* sql, const CString& name, FloorRecord& record,
            std::int64_t* floorId = nullptr) {
    kelaz::SqliteStatement st(db, sql);
    st.Bind(1, name);
    if (!st.Step()) return false;
    record.strName = st.Text(0);
    record.dHeight = st.Real(1);
    record.dElevation = st.Real(2);
    if (floorId) *floorId = st.Int(3);
    return true;
}

constexpr const char* kRowSql = "SELECT name, height, elevation, id FROM floor WHERE name = ?1";
constexpr const char* kMemberSql =
    "SELECT name, height, elevation, floor_id FROM floor_member WHERE name = ?1";

bool InRange(kelaz::SqliteDb& db, const CString& name, FloorRecord& record,
             std::int64_t* floorId = nullptr) {
    long n = 0;
    if (!ParseFloorNumber(name, n)) return false;
    kelaz::SqliteStatement st(
        db,
        "SELECT name, height, elevation, id FROM floor WHERE instr(name, '/') > 0 ORDER BY ord");
    while (st.Step()) {
        long first = 0;
        long last = 0;
        if (!kelaz::FloorRangeEnds(st.Text(0), first, last) || n < first || n > last) continue;
        record.strName = name;
        record.dHeight = st.Real(1);
        record.dElevation = st.Real(2) + static_cast<double>(n - first) * st.Real(1);
        if (floorId) *floorId = st.Int(3);
        return true;
    }
    return false;
}

}  // namespace

namespace KelAzDataMng {

bool IFloorMng::GetFloorRecordByFloorName(const CString& floorName, FloorRecord& record) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project || floorName.IsEmpty()) return false;
    FloorRecord found;
    kelaz::SqliteDb& db = project->Db();
    if (!ByName(db, kRowSql, floorName, found) && !ByName(db, kMemberSql, floorName, found) &&
        !InRange(db, floorName, found))
        return false;
    record = found;
    return true;
}

bool IFloorMng::GetSeperateFloorRecordByFloorName(const CString& floorName, FloorRecord& record,
                                                  bool searchRanges) {
    kelaz::ProjectDb* project = kelaz::CurrentProject();
    if (!project || floorName.IsEmpty()) return false;
    FloorRecord found;
    kelaz::SqliteDb& db = project->Db();
    long number = 0;
    const bool single = ParseFloorNumber(floorName, number);
    if (!ByName(db, kMemberSql, floorName, found) &&
        !(single && ByName(db, kRowSql, floorName, found)) &&
        !(searchRanges && InRange(db, floorName, found)))
        return false;
    record = found;
    return true;
}

}  // namespace KelAzDataMng

namespace kelaz {

bool FloorRangeEnds(const CString& rowName, long& first, long& last) {
    const int slash = rowName.Find(L'/');
    return slash >= 0 && ParseFloorNumber(rowName.Left(slash), first) &&
           ParseFloorNumber(rowName.Mid(slash + 1), last);
}

bool FindFloorRow(SqliteDb& db, const CString& floorName, std::int64_t& floorId) {
    FloorRecord record;
    std::int64_t id = 0;
    if (!ByName(db, kRowSql, floorName, record, &id) &&
        !ByName(db, kMemberSql, floorName, record, &id) && !InRange(db, floorName, record, &id))
        return false;
    floorId = id;
    return true;
}

}  // namespace kelaz
