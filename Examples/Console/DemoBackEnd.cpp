#include "DemoBackEnd.hpp"

#include "Item.hpp"

#include <Platform/Coding/JSONDecoder.hpp>

#include <utility>

using tovrel::testing::ContentCoding;
using tovrel::testing::LocalBackEnd;
using tovrel::testing::LocalBackEndOptions;
using tovrel::testing::ReceivedRequest;
using tovrel::testing::ScriptedResponse;

namespace {

constexpr const char* latestItems = R"([
  {"identifier": 1, "title": "Lantern", "created_at": 1762790400000},
  {"identifier": 2, "title": "Compass", "created_at": 1763049600000},
  {"identifier": 3, "title": "Gr\u00fc\u00dfe", "created_at": null}
])";

ScriptedResponse addItem(const ReceivedRequest& request) {
    const auto item = tovrel::JSONDecoder().decode<NewItem>(tovrel::Data(request.body));
    return ScriptedResponse::json(R"({"identifier": 4, "title": ")" + item.title + R"(", "created_at": 1763683200000})",
                                  201);
}

ScriptedResponse oneItem(const ReceivedRequest& request) {
    const std::string& identifier = request.parameters.at("identifier");
    return ScriptedResponse::json(R"({"identifier": )" + identifier + R"(, "title": "Item )" + identifier + R"("})");
}

/// Fresh for two seconds, and good enough for ten minutes when nothing better is to be had.
ScriptedResponse catalogue(const ReceivedRequest& request) {
    const std::string tag = "\"autumn\"";
    ScriptedResponse response =
        request.header("if-none-match") == tag ? ScriptedResponse(304) : ScriptedResponse::text(std::string(4096, '.'));
    return std::move(response).withHeader("ETag", tag).withHeader("Cache-Control", "max-age=2, stale-if-error=600");
}

} // namespace

std::unique_ptr<LocalBackEnd> startDemoBackEnd() {
    LocalBackEndOptions options;
    options.hostNames = {demoHost};
    auto backEnd = LocalBackEnd::start(options);
    backEnd->on("GET", "/items/{identifier}", oneItem);
    backEnd->on("GET", "/items/latest", [](const ReceivedRequest&) {
        return ScriptedResponse::json(latestItems).withCoding(ContentCoding::gzip);
    });
    backEnd->on("POST", "/items", addItem);
    backEnd->on("GET", "/catalogue", catalogue);
    return backEnd;
}
