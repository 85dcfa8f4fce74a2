#pragma once

// The project's contents carry a checksum per table, kept in the file itself. SQLite's
// integrity check proves the file's structure (pages, b-trees, indexes) but not its values: a
// damaged byte inside a text or a number reads back as a different, valid value. The checksums
// catch that. They guard against damage, not against someone who means to change the file: any
// program that recomputes them is trusted.
//
// Per table rather than per row: the project is small (a few hundred rows), so hashing every
// table on open and after each change costs next to nothing, and a writer cannot forget a row
// that a cascade or a trigger changed behind its back.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "suite/data/SqliteDb.h"

namespace kelaz {

// 64-bit FNV-1a. Every step is a bijection of the state, so one changed byte always changes the
// result; several are missed with a chance of about 2^-64.
class ContentHash {
public:
    void Add(std::string_view bytes);
    void AddByte(std::uint8_t byte);
    void AddInt(std::uint64_t value);  // eight bytes, least significant first
    std::uint64_t Value() const { return m_state; }

private:
    std::uint64_t m_state = 0xcbf29ce484222325ULL;
};

// The table that holds the checksums, and the name under which the table definitions
// (sqlite_schema without its page numbers) are checksummed beside the tables.
extern const char* const kContentChecksumSchemaSql;
extern const char* const kContentChecksumTable;
extern const char* const kSchemaChecksumName;

// Recomputes every checksum and stores them. The caller holds the transaction; installed as the
// project connection's step before each commit.
bool WriteContentChecksums(SqliteDb& db);

// Compares the stored checksums with the contents. False on a read error; otherwise true, with
// one line per problem found (empty when the contents are intact).
bool CheckContentChecksums(SqliteDb& db, std::vector<std::string>& problems);

}  // namespace kelaz
