#include <Platform/URLLoading/Detail/Cache/DiskDatabase.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskError.hpp>

#include <sqlite3.h>

namespace tovrel {

namespace {

/// Transactions here last milliseconds, so who is still locked out then will be for long.
constexpr int patienceInMilliseconds = 250;

void check(int code, sqlite3* database) {
    if (code != SQLITE_OK) {
        throw DiskError::fromSQLite(code, database);
    }
}

} // namespace

DiskRows::~DiskRows() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

bool DiskRows::next() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        throw DiskError::fromSQLite(code, sqlite3_db_handle(statement_));
    }
    return false;
}

std::int64_t DiskRows::integer(int column) const {
    return sqlite3_column_int64(statement_, column);
}

std::string_view DiskRows::bytes(int column) const {
    const void* bytes = sqlite3_column_blob(statement_, column);
    if (bytes == nullptr) {
        return {};
    }
    return {static_cast<const char*>(bytes), static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

bool DiskRows::isNull(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

DiskStatement::~DiskStatement() {
    sqlite3_finalize(statement_);
}

void DiskStatement::prepare() {
    if (statement_ == nullptr) {
        check(sqlite3_prepare_v3(database_, text_, -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr), database_);
    }
}

void DiskStatement::bind(int index, std::int64_t value) {
    check(sqlite3_bind_int64(statement_, index, value), database_);
}

void DiskStatement::bind(int index, std::string_view bytes) {
    const char* data = bytes.empty() ? "" : bytes.data();
    check(sqlite3_bind_blob64(statement_, index, data, bytes.size(), SQLITE_STATIC), database_);
}

DiskDatabase::DiskDatabase(const std::filesystem::path& file) {
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_EXRESCODE;
    const int code = sqlite3_open_v2(file.c_str(), &database_, flags, nullptr);
    if (code != SQLITE_OK) {
        const DiskError error = DiskError::fromSQLite(code, database_);
        sqlite3_close(database_);
        throw error;
    }
    sqlite3_busy_timeout(database_, patienceInMilliseconds);
}

DiskDatabase::~DiskDatabase() {
    sqlite3_close_v2(database_);
}

void DiskDatabase::execute(const char* text) {
    check(sqlite3_exec(database_, text, nullptr, nullptr, nullptr), database_);
}

std::int64_t DiskDatabase::integer(const char* text) {
    return DiskStatement(database_, text).integer().value_or(0);
}

int DiskDatabase::changes() const {
    return sqlite3_changes(database_);
}

std::int64_t DiskDatabase::lastInsertedRow() const {
    return sqlite3_last_insert_rowid(database_);
}

DiskTransaction::DiskTransaction(DiskDatabase& database) : database_(database) {
    database_.execute("BEGIN IMMEDIATE");
}

DiskTransaction::~DiskTransaction() {
    // A failure of some kinds has rolled back already.
    if (isOpen_ && sqlite3_get_autocommit(database_.handle()) == 0) {
        sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void DiskTransaction::commit() {
    database_.execute("COMMIT");
    isOpen_ = false;
}

} // namespace tovrel
