#include <Platform/Coding/JSONEncoder.hpp>
#include <QZFrameworkCoreLogic/StringURLEncoding.hpp>
#include <TovrelTesting/Accounts/Private/OAuthRefusal.hpp>
#include <TovrelTesting/Private/NoStore.hpp>
#include <TovrelTesting/Private/OpaqueToken.hpp>
#include <TovrelTesting/SignIn/Private/SignInPages.hpp>
#include <TovrelTesting/SignIn/Private/SignInRelayState.hpp>

#include <fmt/format.h>

#include <tuple>
#include <utility>

namespace tovrel::testing {

namespace {

struct ExchangeAnswer {
    std::string identityToken;
    std::optional<std::string> user;

    static constexpr auto fields() {
        return std::tuple{Field<&ExchangeAnswer::identityToken, "id_token">{}, Field<&ExchangeAnswer::user, "user">{}};
    }
};

std::optional<FormParameters> formOf(const ReceivedRequest& request) {
    return hasFormBody(request) && request.query().empty() ? FormParameters::parse(request.body) : std::nullopt;
}

} // namespace

ScriptedResponse SignInRelayState::relay(const ReceivedRequest& request) {
    const Date now = options_.clock();
    const auto form = formOf(request);
    const std::lock_guard lock(mutex_);
    const auto target = form ? location(*form, now) : std::nullopt;
    if (!target) {
        ++counts_.refusedAnswers;
        return problemPage("The sign-in provider's answer is not valid, or came before.");
    }
    ++counts_.relayed;
    return notStored(ScriptedResponse::redirect(*target, 303)).withHeader("Referrer-Policy", "no-referrer");
}

std::optional<std::string> SignInRelayState::location(const FormParameters& form, Date now) {
    const auto state = form.value("state");
    const auto address = state ? ReturnAddress::ofState(*state) : std::nullopt;
    if (!address) {
        return std::nullopt;
    }
    const auto callback = [&](std::string_view name, std::string_view value) {
        return fmt::format("http://127.0.0.1:{}/callback?{}={}&state={}", address->port, name, value, *state);
    };
    if (const auto error = form.value("error")) {
        return callback("error", urlEncodeQueryParameter(*error).value_or(""));
    }
    const auto code = form.value("code");
    const auto identityToken = form.value("id_token");
    if (!code || !identityToken || !seenCodes_.insert(*code).second) {
        return std::nullopt;
    }
    const std::string grantCode = makeOpaqueToken();
    const double lifetime = static_cast<double>(options_.grantLifetime.count());
    grants_.emplace(grantCode, Grant{*identityToken, form.value("user"), *address, now.advancedBy(lifetime)});
    return callback("code", grantCode);
}

ScriptedResponse SignInRelayState::exchange(const ReceivedRequest& request) {
    const Date now = options_.clock();
    const std::lock_guard lock(mutex_);
    try {
        const Grant grant = redeem(request, now);
        ++counts_.exchanges;
        ExchangeAnswer answer;
        answer.identityToken = grant.identityToken;
        answer.user = grant.user;
        return notStored(ScriptedResponse::json(JSONEncoder().encode(answer).string()));
    } catch (const OAuthRefusal& refusal) {
        ++counts_.refusedExchanges;
        return refusal.response();
    }
}

SignInRelayState::Grant SignInRelayState::redeem(const ReceivedRequest& request, Date now) {
    const auto form = formOf(request);
    const auto code = form ? form->value("code") : std::nullopt;
    const auto verifier = form ? form->value("code_verifier") : std::nullopt;
    if (!code || !verifier) {
        throw OAuthRefusal::invalidRequest("The code or its verifier is missing");
    }
    const auto grant = grants_.extract(*code);
    if (grant.empty() || grant.mapped().expiry <= now || !grant.mapped().address.isProvedBy(*verifier)) {
        throw OAuthRefusal::invalidGrant("The code is not known, was used, has expired or is another application's");
    }
    return grant.mapped();
}

SignInRelayCounts SignInRelayState::counts() const {
    const std::lock_guard lock(mutex_);
    return counts_;
}

} // namespace tovrel::testing
