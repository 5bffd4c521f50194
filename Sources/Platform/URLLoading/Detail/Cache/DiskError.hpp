#pragma once

#include <Platform/System/Error.hpp>

#include <string>

struct sqlite3;

namespace tovrel {

/// Why the cache's database failed, by what can be done about it.
class DiskError final : public Error {
public:
    enum class Kind {
        /// Another process has it locked.
        busy,
        /// No room in the file system.
        full,
        /// The file is not, or no longer, a database of this cache.
        damaged,
        /// Anything else: no permission, no folder, no memory, a failing device.
        unavailable,
    };

    DiskError(Kind kind, std::string message);
    /// What a result code of SQLite means; `database` may be null when there is none.
    static DiskError fromSQLite(int code, sqlite3* database);
    /// What an error number of the operating system means.
    static DiskError fromSystem(int number, const std::string& operation);

    DiskError(const DiskError&) = default;
    DiskError(DiskError&&) noexcept = default;
    DiskError& operator=(const DiskError&) = default;
    DiskError& operator=(DiskError&&) noexcept = default;
    ~DiskError() override;

    Kind kind() const noexcept { return kind_; }

    friend bool operator==(const DiskError& a, const DiskError& b) noexcept { return a.kind_ == b.kind_; }

private:
    Kind kind_;
};

} // namespace tovrel
