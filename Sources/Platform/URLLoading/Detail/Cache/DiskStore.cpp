#include <Platform/URLLoading/Detail/Cache/DiskChecksum.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskError.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskStore.hpp>

#include <limits>
#include <sqlite3.h>
#include <string>

namespace tovrel {

namespace {

/// Files of another one are replaced.
constexpr std::int64_t schemaVersion = 1;

/// The parts of a body are numbered behind the identifier of its response, so that they lie together in the file.
constexpr std::int64_t partBits = 20;
constexpr std::int64_t largestPart = (std::int64_t{1} << partBits) - 1;

/// Identifiers start at a random number, so that one of a file that was replaced names nothing in its successor.
constexpr const char* schema = R"(
    CREATE TABLE responses(
        id INTEGER PRIMARY KEY AUTOINCREMENT,
        url_hash INTEGER NOT NULL,
        url BLOB NOT NULL,
        variant BLOB,
        body_size INTEGER,
        body_checksum INTEGER,
        checksum INTEGER,
        last_use INTEGER,
        head BLOB);
    CREATE INDEX responses_by_url ON responses(url_hash);
    CREATE INDEX responses_by_use ON responses(last_use) WHERE last_use IS NOT NULL;
    CREATE INDEX unfinished_responses ON responses(id) WHERE last_use IS NULL;
    CREATE TABLE parts(id INTEGER PRIMARY KEY, bytes BLOB NOT NULL);
    INSERT INTO sqlite_sequence(name, seq) VALUES('responses', random() & 0xffffffffff);
    PRAGMA user_version = 1;
)";

/// The write-ahead log is kept to some megabytes. Freed pages are wiped where that costs no extra writing.
constexpr const char* settings = R"(
    PRAGMA journal_mode = WAL;
    PRAGMA synchronous = NORMAL;
    PRAGMA wal_autocheckpoint = 500;
    PRAGMA journal_size_limit = 2097152;
    PRAGMA secure_delete = FAST;
    PRAGMA temp_store = MEMORY;
    PRAGMA cell_size_check = ON;
    PRAGMA trusted_schema = OFF;
)";

std::int64_t signedHash(std::uint64_t hash) {
    return static_cast<std::int64_t>(hash);
}

std::int64_t signedHash(std::string_view url) {
    return signedHash(diskHash(url));
}

std::int64_t partNumber(std::int64_t identifier, std::int64_t part) {
    return identifier << partBits | part;
}

std::int64_t checksumOf(std::string_view url, std::string_view variant, std::string_view head, std::int64_t bodySize,
                        std::int64_t bodyChecksum) {
    const std::string numbers = std::to_string(url.size()) + ' ' + std::to_string(variant.size()) + ' ' +
                                std::to_string(bodySize) + ' ' + std::to_string(bodyChecksum) + ' ';
    return diskChecksum(head, diskChecksum(variant, diskChecksum(url, diskChecksum(numbers))));
}

} // namespace

DiskStore::DiskStore(const std::filesystem::path& file)
    : database_(file),
      find_(database_.handle(), "SELECT id, variant, body_size, body_checksum, checksum, head FROM responses "
                                "WHERE url_hash = ? AND url = ? AND last_use IS NOT NULL"),
      body_(database_.handle(), "SELECT bytes FROM parts WHERE id BETWEEN ? AND ? ORDER BY id"),
      hashes_(database_.handle(), "SELECT url_hash FROM responses"),
      contains_(database_.handle(), "SELECT 1 FROM responses WHERE url_hash = ? LIMIT 1"),
      version_(database_.handle(), "PRAGMA data_version"),
      pages_(database_.handle(), "PRAGMA page_count"),
      freePages_(database_.handle(), "PRAGMA freelist_count"),
      start_(database_.handle(), "INSERT INTO responses(url_hash, url) VALUES(?, ?)"),
      append_(database_.handle(), "INSERT INTO parts SELECT ?, ? WHERE EXISTS("
                                  "SELECT 1 FROM responses WHERE id = ? AND last_use IS NULL)"),
      finish_(database_.handle(), "UPDATE responses SET variant = ?, body_size = ?, body_checksum = ?, checksum = ?, "
                                  "last_use = ?, head = ? WHERE id = ? AND last_use IS NULL"),
      replaceHead_(database_.handle(), "UPDATE responses SET checksum = ?, head = ? WHERE id = ?"),
      ofURL_(database_.handle(), "SELECT id FROM responses WHERE url_hash = ? AND url = ?"),
      ofVariant_(database_.handle(), "SELECT id, body_size, body_checksum FROM responses "
                                     "WHERE url_hash = ? AND url = ? AND variant = ? AND last_use IS NOT NULL"),
      unfinished_(database_.handle(), "SELECT id FROM responses WHERE last_use IS NULL"),
      leastUsed_(database_.handle(), "SELECT id, url_hash FROM responses WHERE last_use IS NOT NULL AND id != ? "
                                     "ORDER BY last_use LIMIT 1"),
      mostUsed_(database_.handle(), "SELECT last_use FROM responses WHERE last_use IS NOT NULL "
                                    "ORDER BY last_use DESC LIMIT 1"),
      touch_(database_.handle(), "UPDATE responses SET last_use = ? "
                                 "WHERE url_hash = ? AND url = ? AND variant = ? AND last_use IS NOT NULL"),
      removeHead_(database_.handle(), "DELETE FROM responses WHERE id = ?"),
      removeBody_(database_.handle(), "DELETE FROM parts WHERE id BETWEEN ? AND ?") {
    sqlite3_db_config(database_.handle(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    // Only an empty file takes it.
    database_.execute("PRAGMA auto_vacuum = INCREMENTAL");
    database_.execute(settings);
    build();
    pageSize_ = database_.integer("PRAGMA page_size");
}

void DiskStore::build() {
    if (database_.integer("PRAGMA user_version") == schemaVersion) {
        return;
    }
    DiskTransaction transaction(database_);
    if (database_.integer("PRAGMA user_version") == schemaVersion) {
        return;
    }
    if (database_.integer("SELECT count(*) FROM sqlite_schema") != 0) {
        throw DiskError(DiskError::Kind::damaged, "response cache: the file is of another version");
    }
    database_.execute(schema);
    transaction.commit();
}

void DiskStore::sweep() {
    std::vector<std::int64_t> identifiers;
    {
        DiskRows rows = unfinished_.rows();
        while (rows.next()) {
            identifiers.push_back(rows.integer(0));
        }
    }
    if (!identifiers.empty()) {
        DiskTransaction transaction(database_);
        remove(identifiers);
        transaction.commit();
    }
}

std::vector<DiskEntry> DiskStore::find(std::string_view url, std::vector<std::int64_t>& damaged) {
    std::vector<DiskEntry> entries;
    DiskRows rows = find_.rows(signedHash(url), url);
    while (rows.next()) {
        const std::string_view variant = rows.bytes(1);
        const std::string_view head = rows.bytes(5);
        const std::int64_t bodySize = rows.integer(2);
        const std::int64_t bodyChecksum = rows.integer(3);
        if (checksumOf(url, variant, head, bodySize, bodyChecksum) != rows.integer(4)) {
            damaged.push_back(rows.integer(0));
            continue;
        }
        entries.emplace_back(rows.integer(0), std::string(variant), std::string(head),
                             static_cast<std::uint64_t>(bodySize), static_cast<std::uint32_t>(bodyChecksum));
    }
    return entries;
}

std::optional<Data> DiskStore::body(const DiskEntry& entry, bool& isDamaged) {
    MutableData bytes;
    bytes.reserve(static_cast<std::size_t>(entry.bodySize));
    std::uint32_t checksum = 0;
    DiskRows rows = body_.rows(partNumber(entry.identifier, 0), partNumber(entry.identifier, largestPart));
    while (bytes.size() <= entry.bodySize && rows.next()) {
        const std::string_view part = rows.bytes(0);
        checksum = diskChecksum(part, checksum);
        bytes.append(part);
    }
    if (bytes.size() == entry.bodySize && checksum == entry.bodyChecksum) {
        return bytes.freeze();
    }
    isDamaged = !bytes.empty();
    return std::nullopt;
}

std::unordered_set<std::uint64_t> DiskStore::hashes() {
    std::unordered_set<std::uint64_t> found;
    DiskRows rows = hashes_.rows();
    while (rows.next()) {
        found.insert(static_cast<std::uint64_t>(rows.integer(0)));
    }
    return found;
}

bool DiskStore::contains(std::uint64_t hash) {
    return contains_.integer(signedHash(hash)).has_value();
}

std::int64_t DiskStore::version() {
    return version_.integer().value_or(0);
}

std::uint64_t DiskStore::usage() {
    return static_cast<std::uint64_t>((pages_.integer().value_or(0) - freePages_.integer().value_or(0)) * pageSize_);
}

DiskTransaction DiskStore::begin() {
    lastUse_.reset();
    return DiskTransaction(database_);
}

std::int64_t DiskStore::start(std::string_view url) {
    start_.run(signedHash(url), url);
    return database_.lastInsertedRow();
}

bool DiskStore::append(std::int64_t identifier, std::int64_t part, std::string_view bytes) {
    if (part > largestPart) {
        return false;
    }
    append_.run(partNumber(identifier, part), bytes, identifier);
    return database_.changes() == 1;
}

bool DiskStore::finish(std::string_view url, const DiskEntry& entry) {
    remove(url, entry.variant);
    const auto bodySize = static_cast<std::int64_t>(entry.bodySize);
    const std::int64_t bodyChecksum = entry.bodyChecksum;
    finish_.run(std::string_view(entry.variant), bodySize, bodyChecksum,
                checksumOf(url, entry.variant, entry.head, bodySize, bodyChecksum), nextUse(),
                std::string_view(entry.head), entry.identifier);
    return database_.changes() == 1;
}

void DiskStore::replaceHead(std::string_view url, std::string_view variant, std::string_view head) {
    DiskRows rows = ofVariant_.rows(signedHash(url), url, variant);
    if (rows.next()) {
        replaceHead_.run(checksumOf(url, variant, head, rows.integer(1), rows.integer(2)), head, rows.integer(0));
    }
}

void DiskStore::remove(std::int64_t identifier) {
    removeHead_.run(identifier);
    removeBody_.run(partNumber(identifier, 0), partNumber(identifier, largestPart));
}

void DiskStore::remove(const std::vector<std::int64_t>& identifiers) {
    for (const std::int64_t identifier : identifiers) {
        remove(identifier);
    }
}

void DiskStore::remove(std::string_view url) {
    std::vector<std::int64_t> identifiers;
    {
        DiskRows rows = ofURL_.rows(signedHash(url), url);
        while (rows.next()) {
            identifiers.push_back(rows.integer(0));
        }
    }
    remove(identifiers);
}

void DiskStore::remove(std::string_view url, std::string_view variant) {
    std::vector<std::int64_t> identifiers;
    {
        DiskRows rows = ofVariant_.rows(signedHash(url), url, variant);
        while (rows.next()) {
            identifiers.push_back(rows.integer(0));
        }
    }
    remove(identifiers);
}

void DiskStore::removeAll() {
    database_.execute("DELETE FROM parts");
    database_.execute("DELETE FROM responses");
}

void DiskStore::touch(std::string_view url, std::string_view variant) {
    touch_.run(nextUse(), signedHash(url), url, variant);
}

std::int64_t DiskStore::nextUse() {
    // Other processes count on from what they find, too. A number beyond reach of counting is none of ours.
    if (!lastUse_) {
        lastUse_ = mostUsed_.integer().value_or(0);
        if (*lastUse_ < 0 || *lastUse_ > std::numeric_limits<std::int64_t>::max() / 2) {
            throw DiskError(DiskError::Kind::damaged, "response cache: impossible order of use");
        }
    }
    return ++*lastUse_;
}

bool DiskStore::makeRoom(std::uint64_t bytes, std::uint64_t capacity, std::int64_t kept,
                         std::vector<std::uint64_t>& evicted) {
    while (usage() + bytes > capacity) {
        std::int64_t identifier = 0;
        {
            DiskRows rows = leastUsed_.rows(kept);
            if (!rows.next()) {
                return false;
            }
            identifier = rows.integer(0);
            evicted.push_back(static_cast<std::uint64_t>(rows.integer(1)));
        }
        remove(identifier);
    }
    return true;
}

void DiskStore::writeBack() {
    database_.execute("PRAGMA wal_checkpoint(TRUNCATE)");
}

void DiskStore::shrink() {
    // On a full disk there may be no room for the second step before the first one.
    writeBack();
    database_.execute("PRAGMA incremental_vacuum");
    writeBack();
}

} // namespace tovrel
