#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace tovrel {

/// The rows of a statement that runs. The statement must not run twice at once.
class DiskRows {
public:
    explicit DiskRows(sqlite3_stmt* statement) : statement_(statement) {}
    DiskRows(const DiskRows&) = delete;
    DiskRows& operator=(const DiskRows&) = delete;
    ~DiskRows();

    /// Goes on to the next row, the first one at first; false behind the last.
    bool next();

    [[nodiscard]] std::int64_t integer(int column) const;
    /// Valid until the next row.
    [[nodiscard]] std::string_view bytes(int column) const;
    [[nodiscard]] bool isNull(int column) const;

private:
    sqlite3_stmt* statement_;
};

/// A statement that is compiled with its first use and kept. Values are integers, bytes, and null.
///
/// All operations throw `DiskError`.
class DiskStatement {
public:
    DiskStatement(sqlite3* database, const char* text) : database_(database), text_(text) {}
    DiskStatement(const DiskStatement&) = delete;
    DiskStatement& operator=(const DiskStatement&) = delete;
    ~DiskStatement();

    /// Starts; bytes are referred to and must outlive the rows.
    template <class... Values>
    [[nodiscard]] DiskRows rows(const Values&... values) {
        prepare();
        int index = 0;
        (bind(++index, values), ...);
        return DiskRows(statement_);
    }

    /// Runs to the end.
    template <class... Values>
    void run(const Values&... values) {
        DiskRows all = rows(values...);
        while (all.next()) {
        }
    }

    /// The first column of the first row.
    template <class... Values>
    [[nodiscard]] std::optional<std::int64_t> integer(const Values&... values) {
        DiskRows all = rows(values...);
        return all.next() && !all.isNull(0) ? std::optional(all.integer(0)) : std::nullopt;
    }

private:
    void prepare();
    void bind(int index, std::int64_t value);
    void bind(int index, std::string_view bytes);

    sqlite3* database_;
    const char* text_;
    sqlite3_stmt* statement_ = nullptr;
};

/// A connection to a database file. One thread at a time may use it. All operations throw `DiskError`.
class DiskDatabase {
public:
    /// Opens an existing file.
    explicit DiskDatabase(const std::filesystem::path& file);
    DiskDatabase(const DiskDatabase&) = delete;
    DiskDatabase& operator=(const DiskDatabase&) = delete;
    ~DiskDatabase();

    [[nodiscard]] sqlite3* handle() const { return database_; }

    /// Runs statements without values and without rows of interest.
    void execute(const char* text);
    /// The number that a statement without values gives.
    [[nodiscard]] std::int64_t integer(const char* text);
    /// Rows that the last statement has changed.
    [[nodiscard]] int changes() const;
    [[nodiscard]] std::int64_t lastInsertedRow() const;

private:
    sqlite3* database_ = nullptr;
};

/// Everything until `commit`, or nothing. Waits a moment for other processes that write.
class DiskTransaction {
public:
    explicit DiskTransaction(DiskDatabase& database);
    DiskTransaction(const DiskTransaction&) = delete;
    DiskTransaction& operator=(const DiskTransaction&) = delete;
    ~DiskTransaction();

    void commit();

private:
    DiskDatabase& database_;
    bool isOpen_ = true;
};

} // namespace tovrel
