#include "suite/data/SqliteDb.h"

#include "host/Assert.h"

namespace kelaz {

bool SqliteDb::Open(const std::string& path, int flags) {
    Close();
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(path.c_str(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        m_error = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
        sqlite3_close(db);
        return false;
    }
    sqlite3_extended_result_codes(db, 1);
    // Another process may hold the file for a moment (a second kelaz on the same project).
    sqlite3_busy_timeout(db, 2000);
    m_db = db;
    m_error.clear();
    return true;
}

void SqliteDb::Close() {
    if (m_db) sqlite3_close_v2(m_db);
    m_db = nullptr;
}

bool SqliteDb::Exec(const char* sql) {
    KELAZ_ASSERT(m_db, "statement on a closed project database");
    char* message = nullptr;
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, &message) == SQLITE_OK) return true;
    m_error = message ? message : sqlite3_errmsg(m_db);
    sqlite3_free(message);
    return false;
}

bool SqliteDb::QueryInt(const char* sql, std::int64_t& value) {
    SqliteStatement st(*this, sql);
    if (!st.Step()) {
        if (st.Ok()) m_error = std::string("“") + sql + "”没有返回结果";
        return false;
    }
    value = st.Int(0);
    return true;
}

std::int64_t SqliteDb::LastInsertRowId() const { return sqlite3_last_insert_rowid(m_db); }

void SqliteDb::SetBeforeCommit(BeforeCommit step) {
    KELAZ_ASSERT(m_db, "commit step on a closed project database");
    m_beforeCommit = step;
    sqlite3_commit_hook(m_db, step ? &SqliteDb::OnCommit : nullptr, step ? this : nullptr);
}

// Non-zero turns the commit into a rollback.
int SqliteDb::OnCommit(void* self) { return static_cast<SqliteDb*>(self)->m_committing ? 0 : 1; }

SqliteStatement::SqliteStatement(SqliteDb& db, const char* sql) : m_db(db) {
    KELAZ_ASSERT(db.IsOpen(), "statement on a closed project database");
    if (sqlite3_prepare_v2(db.Handle(), sql, -1, &m_stmt, nullptr) != SQLITE_OK) {
        Fail("准备语句");
        sqlite3_finalize(m_stmt);
        m_stmt = nullptr;
    }
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(m_stmt); }

void SqliteStatement::Fail(const char* what) {
    m_failed = true;
    m_db.SetError(std::string(what) + "失败：" + sqlite3_errmsg(m_db.Handle()));
}

SqliteStatement& SqliteStatement::Bind(int index, const CString& text) {
    if (!Ok()) return *this;
    const std::string utf8 = ToUtf8(text);
    if (sqlite3_bind_text(m_stmt, index, utf8.data(), static_cast<int>(utf8.size()),
                          SQLITE_TRANSIENT) != SQLITE_OK)
        Fail("绑定参数");
    return *this;
}

SqliteStatement& SqliteStatement::Bind(int index, double value) {
    if (Ok() && sqlite3_bind_double(m_stmt, index, value) != SQLITE_OK) Fail("绑定参数");
    return *this;
}

SqliteStatement& SqliteStatement::Bind(int index, std::int64_t value) {
    if (Ok() && sqlite3_bind_int64(m_stmt, index, value) != SQLITE_OK) Fail("绑定参数");
    return *this;
}

SqliteStatement& SqliteStatement::BindNull(int index) {
    if (Ok() && sqlite3_bind_null(m_stmt, index) != SQLITE_OK) Fail("绑定参数");
    return *this;
}

bool SqliteStatement::Step() {
    if (!Ok()) return false;
    const int rc = sqlite3_step(m_stmt);
    if (rc == SQLITE_ROW) return true;
    if (rc != SQLITE_DONE) Fail("执行语句");
    return false;
}

bool SqliteStatement::Run() {
    if (!Ok()) return false;
    while (Step()) {
    }
    return Ok();
}

void SqliteStatement::Reset() {
    if (!m_stmt) return;
    sqlite3_reset(m_stmt);
    sqlite3_clear_bindings(m_stmt);
    m_failed = false;
}

int SqliteStatement::Columns() const { return sqlite3_column_count(m_stmt); }

int SqliteStatement::Type(int column) const { return sqlite3_column_type(m_stmt, column); }

std::string_view SqliteStatement::Bytes(int column) const {
    // The text or blob call converts the value first; its length is asked afterwards.
    const void* data = Type(column) == SQLITE_BLOB
                           ? sqlite3_column_blob(m_stmt, column)
                           : static_cast<const void*>(sqlite3_column_text(m_stmt, column));
    if (!data) return {};
    return {static_cast<const char*>(data),
            static_cast<size_t>(sqlite3_column_bytes(m_stmt, column))};
}

CString SqliteStatement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_stmt, column));
    if (!text) return CString();
    return FromUtf8(
        std::string_view(text, static_cast<size_t>(sqlite3_column_bytes(m_stmt, column))));
}

double SqliteStatement::Real(int column) const { return sqlite3_column_double(m_stmt, column); }

std::int64_t SqliteStatement::Int(int column) const { return sqlite3_column_int64(m_stmt, column); }

bool SqliteStatement::IsNull(int column) const {
    return sqlite3_column_type(m_stmt, column) == SQLITE_NULL;
}

SqliteTransaction::SqliteTransaction(SqliteDb& db) : m_db(db) {
    m_begun = db.Exec("BEGIN IMMEDIATE");
}

SqliteTransaction::~SqliteTransaction() {
    if (m_begun && !m_done) {
        const std::string keep = m_db.LastError();  // the reason for the rollback matters more
        m_db.Exec("ROLLBACK");
        m_db.SetError(keep);
    }
}

bool SqliteTransaction::Commit() {
    if (!m_begun || m_done) return false;
    if (m_db.m_beforeCommit && !m_db.m_beforeCommit(m_db)) return false;
    m_db.m_committing = true;
    m_done = m_db.Exec("COMMIT");
    m_db.m_committing = false;
    return m_done;
}

}  // namespace kelaz
