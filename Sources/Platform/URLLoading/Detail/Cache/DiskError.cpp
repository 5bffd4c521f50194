#include <Platform/URLLoading/Detail/Cache/DiskError.hpp>

#include <cerrno>
#include <sqlite3.h>
#include <system_error>
#include <utility>

namespace tovrel {

namespace {

using Kind = DiskError::Kind;

/// EFBIG is the limit of a process on the size of its files.
bool meansFull(int number) {
    return number == ENOSPC || number == EDQUOT || number == EFBIG;
}

Kind kindOf(int code, sqlite3* database) {
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return Kind::busy;
    case SQLITE_FULL:
        return Kind::full;
    // The last four are a schema that is not ours under our version number, and contents that contradict it.
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_ERROR:
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
    case SQLITE_TOOBIG:
        return Kind::damaged;
    case SQLITE_IOERR:
        if (code == SQLITE_IOERR_SHORT_READ || code == SQLITE_IOERR_CORRUPTFS) {
            return Kind::damaged;
        }
        return database != nullptr && meansFull(sqlite3_system_errno(database)) ? Kind::full : Kind::unavailable;
    default:
        return Kind::unavailable;
    }
}

} // namespace

DiskError::DiskError(Kind kind, std::string message) : Error(std::move(message)), kind_(kind) {}

DiskError::~DiskError() = default;

DiskError DiskError::fromSQLite(int code, sqlite3* database) {
    return {kindOf(code, database), std::string("response cache: ") + sqlite3_errstr(code)};
}

DiskError DiskError::fromSystem(int number, const std::string& operation) {
    return {meansFull(number) ? Kind::full : Kind::unavailable,
            "response cache: " + operation + ": " + std::generic_category().message(number)};
}

} // namespace tovrel
