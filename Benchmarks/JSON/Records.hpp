#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Coding/Date.hpp>
#include <Platform/Coding/Field.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace tovrel::benchmarks {

/// What an API returns many of. On the wire its keys are in snake case and its dates milliseconds since 1970.
struct Record {
    std::int64_t identifier = 0;
    std::string title;
    std::string authorName;
    std::string thumbnailPath;
    bool isPremium = false;
    double averageRating = 0;
    std::optional<std::string> seriesName;
    Date createdAt;
    std::optional<Date> updatedAt;

    Record() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Record::identifier, "id">{},         Field<&Record::title, "title">{},
                          Field<&Record::authorName, "authorName">{}, Field<&Record::thumbnailPath, "thumbnailPath">{},
                          Field<&Record::isPremium, "isPremium">{},   Field<&Record::averageRating, "averageRating">{},
                          Field<&Record::seriesName, "seriesName">{}, Field<&Record::createdAt, "createdAt">{},
                          Field<&Record::updatedAt, "updatedAt">{}};
    }
    friend bool operator==(const Record&, const Record&) = default;
};

struct Meta {
    std::int64_t status = 0;
    std::string requestId;
    std::int64_t totalCount = 0;

    Meta() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Meta::status, "status">{}, Field<&Meta::requestId, "requestId">{},
                          Field<&Meta::totalCount, "totalCount">{}};
    }
    friend bool operator==(const Meta&, const Meta&) = default;
};

struct RecordEnvelope {
    Meta meta;
    std::vector<Record> data;

    RecordEnvelope() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&RecordEnvelope::meta, "meta">{}, Field<&RecordEnvelope::data, "data">{}};
    }
    friend bool operator==(const RecordEnvelope&, const RecordEnvelope&) = default;
};

/// The same records every time.
RecordEnvelope makeEnvelope(std::size_t recordCount);

/// The envelope as a server writes it, without white space.
std::string writtenByServer(const RecordEnvelope& envelope);

} // namespace tovrel::benchmarks
