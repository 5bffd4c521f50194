#include <cmath>
#include <JSON/JSONPeers.hpp>
#include <stdexcept>
#include <string_view>

#define RAPIDJSON_SSE2
#define RAPIDJSON_HAS_STDSTRING 1
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace tovrel::benchmarks {

namespace {

using rapidjson::Value;

const Value* find(const Value& object, const char* key) {
    const auto member = object.FindMember(key);
    return member == object.MemberEnd() ? nullptr : &member->value;
}

const Value& require(const Value& object, const char* key) {
    const Value* value = find(object, key);
    if (value == nullptr) {
        throw std::runtime_error("missing key");
    }
    return *value;
}

void check(bool typeMatches) {
    if (!typeMatches) {
        throw std::runtime_error("wrong type");
    }
}

std::int64_t integer(const Value& value) {
    check(value.IsInt64());
    return value.GetInt64();
}

std::string string(const Value& value) {
    check(value.IsString());
    return std::string(value.GetString(), value.GetStringLength());
}

double number(const Value& value) {
    check(value.IsNumber());
    return value.GetDouble();
}

bool boolean(const Value& value) {
    check(value.IsBool());
    return value.GetBool();
}

Record decodeRecord(const Value& object) {
    check(object.IsObject());
    Record record;
    record.identifier = integer(require(object, "id"));
    record.title = string(require(object, "title"));
    record.authorName = string(require(object, "author_name"));
    record.thumbnailPath = string(require(object, "thumbnail_path"));
    record.isPremium = boolean(require(object, "is_premium"));
    record.averageRating = number(require(object, "average_rating"));
    if (const Value* series = find(object, "series_name"); series != nullptr && !series->IsNull()) {
        record.seriesName = string(*series);
    }
    record.createdAt = Date::fromMillisecondsSince1970(number(require(object, "created_at")));
    if (const Value* updated = find(object, "updated_at"); updated != nullptr && !updated->IsNull()) {
        record.updatedAt = Date::fromMillisecondsSince1970(number(*updated));
    }
    return record;
}

RecordEnvelope decode(const Data& json) {
    rapidjson::Document document;
    document.Parse(reinterpret_cast<const char*>(json.data()), json.size());
    check(!document.HasParseError() && document.IsObject());
    RecordEnvelope envelope;
    const Value& meta = require(document, "meta");
    check(meta.IsObject());
    envelope.meta.status = integer(require(meta, "status"));
    envelope.meta.requestId = string(require(meta, "request_id"));
    envelope.meta.totalCount = integer(require(meta, "total_count"));
    const Value& data = require(document, "data");
    check(data.IsArray());
    envelope.data.reserve(data.Size());
    for (const Value& element : data.GetArray()) {
        envelope.data.push_back(decodeRecord(element));
    }
    return envelope;
}

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void encodeRecord(Writer& writer, const Record& record) {
    writer.StartObject();
    writer.Key("id");
    writer.Int64(record.identifier);
    writer.Key("title");
    writer.String(record.title);
    writer.Key("author_name");
    writer.String(record.authorName);
    writer.Key("thumbnail_path");
    writer.String(record.thumbnailPath);
    writer.Key("is_premium");
    writer.Bool(record.isPremium);
    writer.Key("average_rating");
    writer.Double(record.averageRating);
    if (record.seriesName) {
        writer.Key("series_name");
        writer.String(*record.seriesName);
    }
    writer.Key("created_at");
    writer.Int64(std::llround(record.createdAt.millisecondsSince1970()));
    if (record.updatedAt) {
        writer.Key("updated_at");
        writer.Int64(std::llround(record.updatedAt->millisecondsSince1970()));
    }
    writer.EndObject();
}

void encode(const RecordEnvelope& envelope, const JSONPeer::Reader& read) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writer.Key("meta");
    writer.StartObject();
    writer.Key("status");
    writer.Int64(envelope.meta.status);
    writer.Key("request_id");
    writer.String(envelope.meta.requestId);
    writer.Key("total_count");
    writer.Int64(envelope.meta.totalCount);
    writer.EndObject();
    writer.Key("data");
    writer.StartArray();
    for (const Record& record : envelope.data) {
        encodeRecord(writer, record);
    }
    writer.EndArray();
    writer.EndObject();
    read(std::string_view(buffer.GetString(), buffer.GetSize()));
}

} // namespace

JSONPeer rapidJSON() {
    return JSONPeer("RapidJSON", decode, encode);
}

} // namespace tovrel::benchmarks
