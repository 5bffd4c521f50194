#include <Platform/URLLoading/PercentEncoding.hpp>
#include <TovrelWebServices/SignIn/Web/Private/CallbackAnswer.hpp>
#include <TovrelWebServices/SignIn/Web/Private/Cryptography.hpp>

#include <algorithm>
#include <vector>

namespace tovrel::detail {

namespace {

constexpr std::size_t longestCode = 1024;
constexpr std::size_t longestError = 128;

/// The values of the parameter; a "+" is a space in a form's encoding.
std::vector<std::string> values(std::string_view query, std::string_view wanted) {
    std::vector<std::string> found;
    while (!query.empty()) {
        const std::string_view pair = query.substr(0, query.find('&'));
        query.remove_prefix(std::min(pair.size() + 1, query.size()));
        const std::size_t sign = std::min(pair.find('='), pair.size());
        if (percentDecoded(pair.substr(0, sign)) == wanted) {
            std::string value(pair.substr(std::min(sign + 1, pair.size())));
            std::ranges::replace(value, '+', ' ');
            found.push_back(percentDecoded(value));
        }
    }
    return found;
}

/// Printable ASCII, as codes and error codes are (RFC 6749 appendix A).
bool isPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char character) { return character >= ' ' && character <= '~'; });
}

CallbackAnswer answerIn(std::string_view query) {
    const std::vector<std::string> codes = values(query, "code");
    const std::vector<std::string> errors = values(query, "error");
    if (codes.size() + errors.size() == 1) {
        const std::string& value = codes.empty() ? errors.front() : codes.front();
        if (!value.empty() && value.size() <= (codes.empty() ? longestError : longestCode) && isPlain(value)) {
            return CallbackAnswer(codes.empty() ? CallbackAnswer::Kind::error : CallbackAnswer::Kind::code, value);
        }
    }
    return CallbackAnswer(CallbackAnswer::Kind::malformed);
}

} // namespace

CallbackQuery CallbackQuery::parse(std::string_view query, std::string_view expectedState) {
    const CallbackAnswer nothing(CallbackAnswer::Kind::malformed);
    const std::vector<std::string> states = values(query, "state");
    if (states.size() != 1 || states.front().empty()) {
        return CallbackQuery(CallbackOrigin::stranger, nothing);
    }
    if (!areEqualSecrets(states.front(), expectedState)) {
        return CallbackQuery(CallbackOrigin::otherAttempt, nothing);
    }
    return CallbackQuery(CallbackOrigin::ownAttempt, answerIn(query));
}

} // namespace tovrel::detail
