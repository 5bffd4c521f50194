#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/CallbackRequest.hpp>
#include <TovrelWebServices/SignIn/Web/Private/ReturnPage.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tovrel::fuzz {
namespace {

constexpr std::uint16_t port = 49152;
constexpr std::string_view state = "s";

void require(bool condition, const char* what) {
    if (!condition) {
        fatalError(what);
    }
}

void judge(std::string_view text) {
    const detail::CallbackVerdict verdict = detail::judgeRequest(text, port, state);
    constexpr std::array statuses{200, 400, 404, 405};
    require(std::ranges::count(statuses, verdict.status) == 1, "a status that nobody planned");
    require(verdict.answer.has_value() == (verdict.status == 200), "an answer goes with success, and only with it");
    require(!verdict.answer || text.starts_with("GET /callback?"), "an answer at another address");
    if (verdict.answer && verdict.answer->kind != detail::CallbackAnswer::Kind::malformed) {
        require(!verdict.answer->value.empty() && verdict.answer->value.size() <= 1024, "a value without bounds");
    }
    static_cast<void>(detail::returnPage(verdict));
    static_cast<void>(detail::CallbackQuery::parse(text, state));
}

} // namespace
} // namespace tovrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tovrel::fuzz::judge(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
