#pragma once

// A thin owner of an SQLite connection, its prepared statements and its transactions. Errors
// are answered as false and kept as text on the connection; nothing here throws, so the data
// module can promise the same to its callers.

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "host/text/CString.h"

namespace kelaz {

class SqliteDb {
public:
    SqliteDb() = default;
    ~SqliteDb() { Close(); }
    SqliteDb(const SqliteDb&) = delete;
    SqliteDb& operator=(const SqliteDb&) = delete;

    // flags are sqlite3_open_v2's (SQLITE_OPEN_READWRITE, SQLITE_OPEN_CREATE ...).
    bool Open(const std::string& path, int flags);
    void Close();
    bool IsOpen() const { return m_db != nullptr; }

    // Runs one or more statements that answer no rows.
    bool Exec(const char* sql);
    // The single integer a statement such as "PRAGMA user_version" answers.
    bool QueryInt(const char* sql, std::int64_t& value);

    std::int64_t LastInsertRowId() const;
    const std::string& LastError() const { return m_error; }
    void SetError(std::string text) { m_error = std::move(text); }
    sqlite3* Handle() const { return m_db; }

    // A step every SqliteTransaction on this connection runs inside the transaction just before
    // it commits; a false answer rolls the transaction back. Once one is set, a change committed
    // any other way (a statement run outside a transaction) is rolled back, so that no writer
    // can skip the step.
    using BeforeCommit = bool (*)(SqliteDb&);
    void SetBeforeCommit(BeforeCommit step);

private:
    friend class SqliteTransaction;
    static int OnCommit(void* self);

    sqlite3* m_db = nullptr;
    std::string m_error;
    BeforeCommit m_beforeCommit = nullptr;
    bool m_committing = false;  // the COMMIT of a transaction that ran the step
};

class SqliteStatement {
public:
    SqliteStatement(SqliteDb& db, const char* sql);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;

    bool Ok() const { return m_stmt != nullptr && !m_failed; }

    // Parameters count from 1, as in SQL.
    SqliteStatement& Bind(int index, const CString& text);
    SqliteStatement& Bind(int index, double value);
    SqliteStatement& Bind(int index, std::int64_t value);
    SqliteStatement& Bind(int index, int value) { return Bind(index, std::int64_t{value}); }
    SqliteStatement& Bind(int index, bool value) {
        return Bind(index, std::int64_t{value ? 1 : 0});
    }
    SqliteStatement& BindNull(int index);

    // Next row: true while a row is there; false at the end or on an error (see Ok()).
    bool Step();
    // Runs a statement that answers no rows; true when it completed.
    bool Run();
    // Ready to run again with new parameters.
    void Reset();

    // Columns count from 0.
    int Columns() const;
    // SQLITE_INTEGER, SQLITE_FLOAT, SQLITE_TEXT, SQLITE_BLOB or SQLITE_NULL.
    int Type(int column) const;
    // The value's bytes as stored: UTF-8 for text, raw for a blob.
    std::string_view Bytes(int column) const;
    CString Text(int column) const;
    double Real(int column) const;
    std::int64_t Int(int column) const;
    bool IsNull(int column) const;

private:
    void Fail(const char* what);
    SqliteDb& m_db;
    sqlite3_stmt* m_stmt = nullptr;
    bool m_failed = false;
};

// BEGIN IMMEDIATE on construction; rolled back on destruction unless committed, so that an
// early return or a failed statement leaves the file as it was.
class SqliteTransaction {
public:
    explicit SqliteTransaction(SqliteDb& db);
    ~SqliteTransaction();
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;

    bool Begun() const { return m_begun; }
    bool Commit();

private:
    SqliteDb& m_db;
    bool m_begun = false;
    bool m_done = false;
};

}  // namespace kelaz
