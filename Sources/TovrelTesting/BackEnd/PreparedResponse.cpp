#include <TovrelTesting/BackEnd/PreparedResponse.hpp>

#include <utility>

namespace tovrel::testing {

namespace {

bool forbidsBody(int status) {
    return (status >= 100 && status < 200) || status == 204 || status == 304;
}

} // namespace

PreparedResponse::PreparedResponse(const ReceivedRequest& request, ScriptedResponse response,
                                   std::int64_t lengthDifference)
    : script_(std::move(response)),
      body_(script_.body),
      isBodyless_(request.method == "HEAD" || forbidsBody(script_.status)) {
    const auto scripted = firstValue(script_.headers, "Content-Length");
    if (scripted) {
        hasWrongLength_ = !isBodyless_ && *scripted != std::to_string(body_.size());
    } else if (script_.framing == ResponseFraming::contentLength && !forbidsBody(script_.status)) {
        lengthToAdd_ = body_.size() + static_cast<std::uint64_t>(lengthDifference);
        hasWrongLength_ = !isBodyless_ && lengthDifference != 0;
    }
}

} // namespace tovrel::testing
