#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelTesting/Envelope.hpp>

#include <fmt/format.h>

#include <tuple>
#include <utility>

namespace tovrel::testing {

namespace {

struct Pagination {
    std::int64_t limit = 0;
    std::optional<std::string> next;

    static constexpr auto fields() {
        return std::tuple{Field<&Pagination::limit, "limit">{}, Field<&Pagination::next, "next">{}};
    }
};

struct Meta {
    std::string code;
    std::string message;
    std::optional<Pagination> pagination;

    static constexpr auto fields() {
        return std::tuple{Field<&Meta::code, "code">{}, Field<&Meta::message, "message">{},
                          Field<&Meta::pagination, "pagination">{}};
    }
};

std::string textOf(const Meta& meta, const std::optional<std::string>& data) {
    const std::string encodedMeta = JSONEncoder().encode(meta).string();
    return data ? fmt::format(R"({{"meta":{},"data":{}}})", encodedMeta, *data)
                : fmt::format(R"({{"meta":{}}})", encodedMeta);
}

} // namespace

EnvelopePagination::EnvelopePagination(std::int64_t pageLimit, std::optional<std::string> nextPage)
    : limit(pageLimit), next(std::move(nextPage)) {}

ScriptedResponse envelope(const std::optional<std::string>& data, const std::optional<EnvelopePagination>& pagination) {
    Meta meta;
    meta.code = "ok";
    meta.message = "OK";
    if (pagination) {
        meta.pagination.emplace();
        meta.pagination->limit = pagination->limit;
        meta.pagination->next = pagination->next;
    }
    return ScriptedResponse::json(textOf(meta, data));
}

ScriptedResponse refusalEnvelope(int status, const std::string& code, const std::string& message) {
    Meta meta;
    meta.code = code;
    meta.message = message;
    return ScriptedResponse::json(textOf(meta, std::nullopt), status);
}

} // namespace tovrel::testing
