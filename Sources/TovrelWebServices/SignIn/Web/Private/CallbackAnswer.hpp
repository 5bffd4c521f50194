#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tovrel::detail {

/// What the relay sent the browser to the application with.
struct CallbackAnswer {
    enum class Kind {
        /// `value` fetches the sign-in provider's answer.
        code,
        /// `value` is the sign-in provider's error code.
        error,
        /// It is neither, or both.
        malformed
    };

    Kind kind;
    std::string value;

    explicit CallbackAnswer(Kind answerKind, std::string answerValue = "")
        : kind(answerKind), value(std::move(answerValue)) {}

    friend bool operator==(const CallbackAnswer&, const CallbackAnswer&) = default;
};

/// How a query stands to the state that the application has sent.
enum class CallbackOrigin {
    /// It has that state.
    ownAttempt,
    /// It has another state.
    otherAttempt,
    /// It has no state, more than one, or is no query.
    stranger
};

/// The answer in a callback's query. Anyone on this machine can send a query, so what it says counts only if it has the
/// right state. Parameters that nobody knows are ignored (RFC 6749 section 4.1.2).
struct CallbackQuery {
    CallbackOrigin origin;
    CallbackAnswer answer;

    CallbackQuery(CallbackOrigin queryOrigin, CallbackAnswer queryAnswer)
        : origin(queryOrigin), answer(std::move(queryAnswer)) {}

    static CallbackQuery parse(std::string_view query, std::string_view expectedState);
};

} // namespace tovrel::detail
