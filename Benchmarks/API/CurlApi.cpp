#include <simdjson.h>

#include <API/ApiAnswer.hpp>
#include <API/ApiClients.hpp>
#include <HTTP/CurlLoop.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tovrel::benchmarks {

const char* const fixedHeaderLoopName = "libcurl loop + simdjson";

namespace {

std::string text(simdjson::dom::element object, const char* key) {
    return std::string(std::string_view(object[key].get_string()));
}

std::optional<std::string> optionalText(simdjson::dom::element object, const char* key) {
    std::string_view value;
    if (object[key].get(value) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    return std::string(value);
}

Record decodeRecord(simdjson::dom::element object) {
    Record record;
    record.identifier = object["id"].get_int64();
    record.title = text(object, "title");
    record.authorName = text(object, "author_name");
    record.thumbnailPath = text(object, "thumbnail_path");
    record.isPremium = object["is_premium"].get_bool();
    record.averageRating = object["average_rating"].get_double();
    record.seriesName = optionalText(object, "series_name");
    record.createdAt = Date::fromMillisecondsSince1970(object["created_at"].get_double());
    double updatedAt = 0;
    if (object["updated_at"].get(updatedAt) == simdjson::SUCCESS) {
        record.updatedAt = Date::fromMillisecondsSince1970(updatedAt);
    }
    return record;
}

ApiAnswer decodeAnswer(simdjson::dom::element document) {
    const simdjson::dom::element meta = document["meta"];
    ApiAnswer answer(ApiResponseMeta(text(meta, "code"), text(meta, "message")));
    simdjson::dom::element pagination;
    if (meta["pagination"].get(pagination) == simdjson::SUCCESS) {
        answer.meta.pagination.emplace(pagination["limit"].get_int64(), optionalText(pagination, "next"));
    }
    answer.data.emplace();
    for (const simdjson::dom::element object : document["data"].get_array()) {
        answer.data->push_back(decodeRecord(object));
    }
    return answer;
}

/// Everything is set once; a call costs libcurl and the decoding.
class ApiSlot final : public CurlLoop::Slot {
public:
    explicit ApiSlot(const Endpoint& endpoint) : Slot(endpoint), expected_(apiAnswer()) {
        const std::string override = apiHost() + ":443:127.0.0.1:" + std::to_string(endpoint.port);
        connectTo_ = curl_slist_append(nullptr, override.c_str());
        curl_easy_setopt(easy(), CURLOPT_CONNECT_TO, connectTo_);
        const std::string authorization = "Authorization: Bearer " + accessToken();
        for (const char* field :
             {"Accept-Encoding: deflate, gzip", "Content-Type: application/json", authorization.c_str()}) {
            fields_ = curl_slist_append(fields_, field);
        }
        curl_easy_setopt(easy(), CURLOPT_HTTPHEADER, fields_);
        curl_easy_setopt(easy(), CURLOPT_URL, ("https://" + apiHost() + apiPath).c_str());
        curl_easy_setopt(easy(), CURLOPT_WRITEFUNCTION, &ApiSlot::onBody);
        curl_easy_setopt(easy(), CURLOPT_WRITEDATA, this);
    }
    ~ApiSlot() override {
        curl_slist_free_all(fields_);
        curl_slist_free_all(connectTo_);
    }

    void prepare(const Load& /*load*/) override { body_.clear(); }

    std::size_t finish() override {
        const std::size_t size = body_.size();
        body_.reserve(size + simdjson::SIMDJSON_PADDING);
        const ApiAnswer answer = decodeAnswer(parser_.parse(body_.data(), size, false));
        if (answer.data->size() != expected_.data->size()) {
            throw std::logic_error("the answer is another one");
        }
        return size;
    }

private:
    static std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* self) {
        static_cast<ApiSlot*>(self)->body_.append(bytes, size * count);
        return size * count;
    }

    curl_slist* connectTo_ = nullptr;
    curl_slist* fields_ = nullptr;
    std::string body_;
    simdjson::dom::parser parser_;
    ApiAnswer expected_;
};

} // namespace

HTTPPeer curlAndSimdjson() {
    return HTTPPeer(fixedHeaderLoopName, [](const Endpoint& endpoint, unsigned /*connections*/) {
        return std::make_unique<CurlLoop>(endpoint,
                                          [](const Endpoint& place) { return std::make_unique<ApiSlot>(place); });
    });
}

} // namespace tovrel::benchmarks
