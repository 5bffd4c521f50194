#include <boost/json.hpp>

#include <cmath>
#include <JSON/JSONPeers.hpp>
#include <string_view>

namespace tovrel::benchmarks {

namespace json = boost::json;

namespace {

template <class T>
std::optional<T> optional(const json::object& object, std::string_view key) {
    const json::value* value = object.if_contains(key);
    return value == nullptr || value->is_null() ? std::optional<T>() : json::value_to<T>(*value);
}

std::optional<Date> date(std::optional<double> milliseconds) {
    return milliseconds ? std::optional(Date::fromMillisecondsSince1970(*milliseconds)) : std::nullopt;
}

std::int64_t milliseconds(Date date) {
    return std::llround(date.millisecondsSince1970());
}

} // namespace

static Meta tag_invoke(json::value_to_tag<Meta>, const json::value& value) {
    const json::object& object = value.as_object();
    Meta meta;
    meta.status = object.at("status").as_int64();
    meta.requestId = json::value_to<std::string>(object.at("request_id"));
    meta.totalCount = object.at("total_count").as_int64();
    return meta;
}

static Record tag_invoke(json::value_to_tag<Record>, const json::value& value) {
    const json::object& object = value.as_object();
    Record record;
    record.identifier = object.at("id").as_int64();
    record.title = json::value_to<std::string>(object.at("title"));
    record.authorName = json::value_to<std::string>(object.at("author_name"));
    record.thumbnailPath = json::value_to<std::string>(object.at("thumbnail_path"));
    record.isPremium = object.at("is_premium").as_bool();
    record.averageRating = object.at("average_rating").to_number<double>();
    record.seriesName = optional<std::string>(object, "series_name");
    record.createdAt = Date::fromMillisecondsSince1970(object.at("created_at").to_number<double>());
    record.updatedAt = date(optional<double>(object, "updated_at"));
    return record;
}

static RecordEnvelope tag_invoke(json::value_to_tag<RecordEnvelope>, const json::value& value) {
    const json::object& object = value.as_object();
    RecordEnvelope envelope;
    envelope.meta = json::value_to<Meta>(object.at("meta"));
    envelope.data = json::value_to<std::vector<Record>>(object.at("data"));
    return envelope;
}

static void tag_invoke(json::value_from_tag, json::value& value, const Meta& meta) {
    value = {{"status", meta.status}, {"request_id", meta.requestId}, {"total_count", meta.totalCount}};
}

static void tag_invoke(json::value_from_tag, json::value& value, const Record& record) {
    json::object& object = value.emplace_object();
    object.reserve(9);
    object.emplace("id", record.identifier);
    object.emplace("title", record.title);
    object.emplace("author_name", record.authorName);
    object.emplace("thumbnail_path", record.thumbnailPath);
    object.emplace("is_premium", record.isPremium);
    object.emplace("average_rating", record.averageRating);
    if (record.seriesName) {
        object.emplace("series_name", *record.seriesName);
    }
    object.emplace("created_at", milliseconds(record.createdAt));
    if (record.updatedAt) {
        object.emplace("updated_at", milliseconds(*record.updatedAt));
    }
}

static void tag_invoke(json::value_from_tag, json::value& value, const RecordEnvelope& envelope) {
    json::object& object = value.emplace_object();
    object.emplace("meta", json::value_from(envelope.meta, value.storage()));
    object.emplace("data", json::value_from(envelope.data, value.storage()));
}

JSONPeer boostJSON() {
    return JSONPeer(
        "Boost.JSON",
        [](const Data& document) {
            json::monotonic_resource storage;
            const json::value root = json::parse(document.view(), &storage);
            return json::value_to<RecordEnvelope>(root);
        },
        [](const RecordEnvelope& envelope, const JSONPeer::Reader& read) {
            json::monotonic_resource storage;
            const json::value root = json::value_from(envelope, &storage);
            read(json::serialize(root));
        });
}

} // namespace tovrel::benchmarks
