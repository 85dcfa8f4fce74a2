#include "suite/data/ContentChecksum.h"

#include <cstring>
#include <map>

#include "suite/data/ProjectDb.h"

namespace kelaz {

const char* const kContentChecksumSchemaSql =
    "CREATE TABLE content_checksum(name TEXT PRIMARY KEY, checksum INTEGER NOT NULL) "
    "WITHOUT ROWID;";
const char* const kContentChecksumTable = "content_checksum";
const char* const kSchemaChecksumName = "sqlite_schema";

void ContentHash::AddByte(std::uint8_t byte) {
    m_state ^= byte;
    m_state *= 0x100000001b3ULL;
}

void ContentHash::Add(std::string_view bytes) {
    for (const char c : bytes) AddByte(static_cast<std::uint8_t>(c));
}

void ContentHash::AddInt(std::uint64_t value) {
    for (int i = 0; i < 8; ++i) AddByte(static_cast<std::uint8_t>(value >> (8 * i)));
}

namespace {

// Each value goes in as its type, then its bytes; texts and blobs with their length first, so
// that no two different rows give the same stream of bytes.
bool HashQuery(SqliteDb& db, const std::string& sql, std::uint64_t& hash) {
    SqliteStatement st(db, sql.c_str());
    ContentHash h;
    std::uint64_t rows = 0;
    while (st.Step()) {
        ++rows;
        h.AddByte('R');
        const int columns = st.Columns();
        for (int c = 0; c < columns; ++c) {
            const int type = st.Type(c);
            h.AddByte(static_cast<std::uint8_t>(type));
            switch (type) {
                case SQLITE_INTEGER:
                    h.AddInt(static_cast<std::uint64_t>(st.Int(c)));
                    break;
                case SQLITE_FLOAT: {
                    const double value = st.Real(c);
                    std::uint64_t bits = 0;
                    std::memcpy(&bits, &value, sizeof bits);
                    h.AddInt(bits);
                    break;
                }
                case SQLITE_TEXT:
                case SQLITE_BLOB: {
                    const std::string_view bytes = st.Bytes(c);
                    h.AddInt(bytes.size());
                    h.Add(bytes);
                    break;
                }
                default:  // NULL: the type says it all
                    break;
            }
        }
    }
    if (!st.Ok()) return false;
    h.AddByte('E');
    h.AddInt(rows);
    hash = h.Value();
    return true;
}

// Every checksummed name with the query that reads its contents in a fixed order. The page
// numbers of sqlite_schema are left out: they say where a table lives, not what it holds, and a
// rebuild of the file by the sqlite3 tool (VACUUM) may move them.
std::vector<std::pair<std::string, std::string>> ChecksummedQueries() {
    std::vector<std::pair<std::string, std::string>> queries;
    queries.emplace_back(kSchemaChecksumName,
                         "SELECT type, name, tbl_name, sql FROM sqlite_schema ORDER BY type, name");
    for (int i = 0; i < kProjectTableCount; ++i)
        queries.emplace_back(kProjectTables[i].name, std::string("SELECT * FROM ") +
                                                         kProjectTables[i].name + " ORDER BY " +
                                                         kProjectTables[i].key);
    return queries;
}

std::string Describe(const std::string& name, bool kept) {
    if (name == kSchemaChecksumName) return kept ? "表的定义与校验和不符" : "表的定义没有校验和";
    return "表 " + name + (kept ? "：内容与校验和不符" : "：没有校验和");
}

}  // namespace

bool WriteContentChecksums(SqliteDb& db) {
    SqliteStatement clear(db, "DELETE FROM content_checksum");
    if (!clear.Run()) return false;
    SqliteStatement add(db, "INSERT INTO content_checksum(name, checksum) VALUES (?1, ?2)");
    for (const auto& [name, sql] : ChecksummedQueries()) {
        std::uint64_t hash = 0;
        if (!HashQuery(db, sql, hash)) return false;
        add.Reset();
        if (!add.Bind(1, FromUtf8(name)).Bind(2, static_cast<std::int64_t>(hash)).Run())
            return false;
    }
    return true;
}

bool CheckContentChecksums(SqliteDb& db, std::vector<std::string>& problems) {
    problems.clear();
    // A stored value that is no integer (a damaged type byte) never matches.
    std::map<std::string, std::pair<bool, std::uint64_t>> stored;
    {
        SqliteStatement st(db, "SELECT name, checksum FROM content_checksum ORDER BY name");
        while (st.Step())
            stored[std::string(st.Bytes(0))] = {st.Type(1) == SQLITE_INTEGER,
                                                static_cast<std::uint64_t>(st.Int(1))};
        if (!st.Ok()) return false;
    }
    for (const auto& [name, sql] : ChecksummedQueries()) {
        std::uint64_t hash = 0;
        if (!HashQuery(db, sql, hash)) return false;
        const auto found = stored.find(name);
        if (found == stored.end()) {
            problems.push_back(Describe(name, false));
            continue;
        }
        if (!found->second.first || found->second.second != hash)
            problems.push_back(Describe(name, true));
        stored.erase(found);
    }
    for (const auto& unknown : stored)
        problems.push_back("存有未知的表“" + unknown.first + "”的校验和");
    return true;
}

}  // namespace kelaz
