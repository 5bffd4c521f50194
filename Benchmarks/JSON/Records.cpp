#include <fmt/format.h>

#include <cmath>
#include <iterator>
#include <JSON/Records.hpp>

namespace tovrel::benchmarks {

RecordEnvelope makeEnvelope(std::size_t recordCount) {
    RecordEnvelope envelope;
    envelope.meta.status = 200;
    envelope.meta.requestId = "5f0c9a52-6d0e-4b7e-9a55-2f6f3a9c1d77";
    envelope.meta.totalCount = static_cast<std::int64_t>(recordCount);
    envelope.data.resize(recordCount);
    for (std::size_t index = 0; index < recordCount; ++index) {
        Record& record = envelope.data[index];
        record.identifier = static_cast<std::int64_t>(index) + 7'340'000'000;
        record.title = fmt::format("The story no. {} of a “long” evening", index);
        record.authorName = fmt::format("Zoë of the house number {}", index % 97);
        record.thumbnailPath = fmt::format("/images/{}/thumbnail-480x270.jpg", index * 7919);
        record.isPremium = index % 3 == 0;
        record.averageRating = static_cast<double>(index % 500) / 100.0;
        if (index % 2 == 0) {
            record.seriesName = fmt::format("Evenings, volume {}", index % 12);
        }
        record.createdAt = Date::fromMillisecondsSince1970(1'700'000'000'000.0 + static_cast<double>(index) * 61'000.0);
        if (index % 4 != 0) {
            record.updatedAt = record.createdAt.advancedBy(86'400.0);
        }
    }
    return envelope;
}

std::string writtenByServer(const RecordEnvelope& envelope) {
    std::string text;
    auto out = std::back_inserter(text);
    fmt::format_to(out, R"({{"meta":{{"status":{},"request_id":"{}","total_count":{}}},"data":[)", envelope.meta.status,
                   envelope.meta.requestId, envelope.meta.totalCount);
    const char* separator = "";
    for (const Record& record : envelope.data) {
        fmt::format_to(out,
                       R"({}{{"id":{},"title":"{}","author_name":"{}","thumbnail_path":"{}","is_premium":{},)"
                       R"("average_rating":{})",
                       separator, record.identifier, record.title, record.authorName, record.thumbnailPath,
                       record.isPremium, record.averageRating);
        if (record.seriesName) {
            fmt::format_to(out, R"(,"series_name":"{}")", *record.seriesName);
        }
        fmt::format_to(out, R"(,"created_at":{})", std::llround(record.createdAt.millisecondsSince1970()));
        if (record.updatedAt) {
            fmt::format_to(out, R"(,"updated_at":{})", std::llround(record.updatedAt->millisecondsSince1970()));
        }
        fmt::format_to(out, "}}");
        separator = ",";
    }
    fmt::format_to(out, "]}}");
    return text;
}

} // namespace tovrel::benchmarks
