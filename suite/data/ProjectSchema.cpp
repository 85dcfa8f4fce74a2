#include "suite/data/ProjectDb.h"

namespace kelaz {

// Names are unique where a path or a lookup depends on them; ord keeps the order people entered.
const char* const kProjectSchemaSql = R"sql(
CREATE TABLE setting(key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE speciality(id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, title TEXT NOT NULL,
    ord INTEGER NOT NULL);
CREATE TABLE big_category(id INTEGER PRIMARY KEY,
    spec_id INTEGER NOT NULL REFERENCES speciality(id), name TEXT NOT NULL, ord INTEGER NOT NULL,
    UNIQUE(spec_id, name));
CREATE TABLE small_category(id INTEGER PRIMARY KEY,
    big_id INTEGER NOT NULL REFERENCES big_category(id), name TEXT NOT NULL, ord INTEGER NOT NULL,
    UNIQUE(big_id, name));
CREATE TABLE attribute(id INTEGER PRIMARY KEY,
    small_id INTEGER NOT NULL REFERENCES small_category(id), name TEXT NOT NULL,
    ord INTEGER NOT NULL, section_type INTEGER NOT NULL, shape_code TEXT NOT NULL,
    size_text TEXT NOT NULL, kind TEXT NOT NULL, block_name TEXT NOT NULL, sys_up_height TEXT,
    UNIQUE(small_id, name));
CREATE TABLE attribute_field(
    attribute_id INTEGER NOT NULL REFERENCES attribute(id) ON DELETE CASCADE,
    ord INTEGER NOT NULL, label TEXT NOT NULL, unit TEXT NOT NULL, value TEXT NOT NULL,
    key TEXT NOT NULL, PRIMARY KEY(attribute_id, ord)) WITHOUT ROWID;
CREATE TABLE sys_code(id INTEGER PRIMARY KEY,
    spec_id INTEGER NOT NULL REFERENCES speciality(id), code TEXT NOT NULL, name TEXT NOT NULL,
    color INTEGER NOT NULL CHECK(color BETWEEN 1 AND 255), linetype TEXT NOT NULL,
    ord INTEGER NOT NULL, UNIQUE(spec_id, code));
CREATE TABLE floor(id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, height REAL NOT NULL,
    elevation REAL NOT NULL, ord INTEGER NOT NULL);
CREATE TABLE floor_member(floor_id INTEGER NOT NULL REFERENCES floor(id) ON DELETE CASCADE,
    name TEXT NOT NULL UNIQUE, height REAL NOT NULL, elevation REAL NOT NULL,
    PRIMARY KEY(floor_id, name)) WITHOUT ROWID;
CREATE TABLE lay_mode(floor_id INTEGER NOT NULL REFERENCES floor(id) ON DELETE CASCADE,
    ord INTEGER NOT NULL, code TEXT NOT NULL, description TEXT NOT NULL,
    PRIMARY KEY(floor_id, ord)) WITHOUT ROWID;
CREATE TABLE level_history(key TEXT NOT NULL, ord INTEGER NOT NULL, value TEXT NOT NULL,
    PRIMARY KEY(key, ord)) WITHOUT ROWID;
CREATE TABLE flange_match(table_key TEXT NOT NULL,
    shape TEXT NOT NULL CHECK(shape IN ('方形', '圆形')), ord INTEGER NOT NULL,
    size REAL NOT NULL, any_size INTEGER NOT NULL, flange_name TEXT NOT NULL,
    flange_path TEXT NOT NULL, PRIMARY KEY(table_key, shape, ord)) WITHOUT ROWID;
CREATE TABLE command(name TEXT PRIMARY KEY COLLATE NOCASE, ord INTEGER NOT NULL,
    description TEXT NOT NULL, jig_draw_block INTEGER NOT NULL, check_attribute INTEGER NOT NULL,
    update_ui INTEGER NOT NULL, big_type TEXT NOT NULL, small_types TEXT NOT NULL,
    refresh_path TEXT NOT NULL, extra TEXT NOT NULL);
CREATE TABLE layer(name TEXT PRIMARY KEY, color INTEGER NOT NULL CHECK(color BETWEEN 1 AND 255),
    linetype TEXT NOT NULL, ord INTEGER NOT NULL);
)sql";

// With each table its primary key: the order in which its contents are checksummed.
const ProjectTable kProjectTables[] = {
    {"setting", "key"},
    {"speciality", "id"},
    {"big_category", "id"},
    {"small_category", "id"},
    {"attribute", "id"},
    {"attribute_field", "attribute_id, ord"},
    {"sys_code", "id"},
    {"floor", "id"},
    {"floor_member", "floor_id, name"},
    {"lay_mode", "floor_id, ord"},
    {"level_history", "key, ord"},
    {"flange_match", "table_key, shape, ord"},
    {"command", "name"},
    {"layer", "name"},
};
const int kProjectTableCount = static_cast<int>(std::size(kProjectTables));

}  // namespace kelaz
