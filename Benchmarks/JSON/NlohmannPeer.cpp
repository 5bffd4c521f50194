#include <cmath>
#include <JSON/JSONPeers.hpp>
#include <nlohmann/json.hpp>

namespace tovrel::benchmarks {

using Json = nlohmann::json;

namespace {

template <class T>
std::optional<T> optional(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() || found->is_null() ? std::optional<T>() : found->get<T>();
}

} // namespace

static void from_json(const Json& json, Meta& meta) {
    json.at("status").get_to(meta.status);
    json.at("request_id").get_to(meta.requestId);
    json.at("total_count").get_to(meta.totalCount);
}

static void from_json(const Json& json, Record& record) {
    json.at("id").get_to(record.identifier);
    json.at("title").get_to(record.title);
    json.at("author_name").get_to(record.authorName);
    json.at("thumbnail_path").get_to(record.thumbnailPath);
    json.at("is_premium").get_to(record.isPremium);
    json.at("average_rating").get_to(record.averageRating);
    record.seriesName = optional<std::string>(json, "series_name");
    record.createdAt = Date::fromMillisecondsSince1970(json.at("created_at").get<double>());
    if (const auto updated = optional<double>(json, "updated_at")) {
        record.updatedAt = Date::fromMillisecondsSince1970(*updated);
    }
}

static void from_json(const Json& json, RecordEnvelope& envelope) {
    json.at("meta").get_to(envelope.meta);
    json.at("data").get_to(envelope.data);
}

static void to_json(Json& json, const Meta& meta) {
    json = Json{{"status", meta.status}, {"request_id", meta.requestId}, {"total_count", meta.totalCount}};
}

static void to_json(Json& json, const Record& record) {
    json = Json{{"id", record.identifier},          {"title", record.title},
                {"author_name", record.authorName}, {"thumbnail_path", record.thumbnailPath},
                {"is_premium", record.isPremium},   {"average_rating", record.averageRating}};
    if (record.seriesName) {
        json["series_name"] = *record.seriesName;
    }
    json["created_at"] = std::llround(record.createdAt.millisecondsSince1970());
    if (record.updatedAt) {
        json["updated_at"] = std::llround(record.updatedAt->millisecondsSince1970());
    }
}

static void to_json(Json& json, const RecordEnvelope& envelope) {
    json = Json{{"meta", envelope.meta}, {"data", envelope.data}};
}

JSONPeer nlohmannJSON() {
    return JSONPeer(
        "nlohmann/json", [](const Data& document) { return Json::parse(document.view()).get<RecordEnvelope>(); },
        [](const RecordEnvelope& envelope, const JSONPeer::Reader& read) { read(Json(envelope).dump()); });
}

} // namespace tovrel::benchmarks
