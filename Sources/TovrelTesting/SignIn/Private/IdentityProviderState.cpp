#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelTesting/Private/FormParameters.hpp>
#include <TovrelTesting/Private/OpaqueToken.hpp>
#include <TovrelTesting/SignIn/Private/IdentityProviderState.hpp>

#include <algorithm>
#include <tuple>
#include <utility>

namespace tovrel::testing {

namespace {

using Mistake = IdentityProviderMistake;

struct NameRecord {
    std::optional<std::string> firstName;
    std::optional<std::string> lastName;

    static constexpr auto fields() {
        return std::tuple{Field<&NameRecord::firstName, "firstName">{}, Field<&NameRecord::lastName, "lastName">{}};
    }
};

struct UserRecord {
    NameRecord name;
    std::optional<std::string> email;

    static constexpr auto fields() {
        return std::tuple{Field<&UserRecord::name, "name">{}, Field<&UserRecord::email, "email">{}};
    }
};

std::string encoded(const IdentityUser& user) {
    UserRecord record;
    record.name.firstName = user.firstName;
    record.name.lastName = user.lastName;
    record.email = user.email;
    return JSONEncoder().encode(record).string();
}

std::string userRecord(const IdentityUser& user, std::optional<Mistake> mistake) {
    if (mistake == Mistake::malformedUser) {
        return R"({"name":)";
    }
    return mistake == Mistake::emptyUser ? "{}" : encoded(user);
}

std::string identityToken(const IdentityProviderOptions& options, const IdentityUser& user, const std::string& nonce,
                          std::optional<Mistake> mistake, Date now) {
    if (mistake == Mistake::malformedToken) {
        return "no token";
    }
    IdentityClaims claims(user.subject,
                          mistake == Mistake::wrongAudience ? "com.example.other" : options.clientIdentifier);
    claims.nonce = mistake == Mistake::wrongNonce ? makeOpaqueToken() : nonce;
    claims.email = user.email;
    if (mistake == Mistake::wrongIssuer) {
        return IdentityIssuer::make("https://other.example")->mint(claims, now, options.tokenLifetime);
    }
    if (mistake == Mistake::expiredToken) {
        const auto lifetime = static_cast<double>(options.tokenLifetime.count());
        return options.issuer->mint(claims, now.advancedBy(-2 * lifetime), options.tokenLifetime);
    }
    return options.issuer->mint(claims, now, options.tokenLifetime);
}

/// Another state for the same port and challenge.
std::string otherState(const std::string& state) {
    return makeOpaqueToken() + state.substr(std::min(state.find('.'), state.size()));
}

} // namespace

IdentityProviderState::IdentityProviderState(const IdentityProviderOptions& providerOptions)
    : options(providerOptions), user("user-1") {
    user.firstName = "Ada";
    user.lastName = "Lovelace";
    user.email = "ada@example.org";
}

ScriptedResponse IdentityProviderState::ask(const ReceivedRequest& request) {
    const auto question = AuthorizationQuestion::parse(options, request.query());
    if (!question) {
        return problemPage("The application's request is not valid.");
    }
    const std::string ticket = makeOpaqueToken();
    const std::lock_guard lock(mutex);
    ++counts.pagesShown;
    questions_.emplace(ticket, *question);
    return consentPage(user, options.clientIdentifier, ticket, !consents.contains(user.subject));
}

ScriptedResponse IdentityProviderState::decide(const ReceivedRequest& request) {
    const auto form = hasFormBody(request) ? FormParameters::parse(request.body) : std::nullopt;
    const Date now = options.clock();
    const std::lock_guard lock(mutex);
    const auto question =
        form ? questions_.extract(form->value("request").value_or("")) : decltype(questions_)::node_type();
    const std::string decision = question.empty() ? "" : form->value("decision").value_or("");
    if (decision == "continue") {
        ++counts.consents;
        const Answer answer = consent(question.mapped(), now);
        return formPostPage(answer.url, answer.fields);
    }
    if (decision == "cancel") {
        ++counts.cancellations;
        return formPostPage(question.mapped().redirectURL,
                            {{"error", "user_cancelled_authorize"}, {"state", question.mapped().state}});
    }
    return problemPage("Nobody was asked this, or it was answered before.");
}

IdentityProviderState::Answer IdentityProviderState::consent(const AuthorizationQuestion& question, Date now) {
    std::optional<Mistake> mistake;
    if (!twists.empty()) {
        const Twist twist = std::move(twists.front());
        twists.pop_front();
        if (const auto* code = std::get_if<std::string>(&twist)) {
            return {question.redirectURL, {{"error", *code}, {"state", question.state}}};
        }
        mistake = std::get<Mistake>(twist);
    }
    if (mistake == Mistake::replayedAnswer && lastAnswer_) {
        return *lastAnswer_;
    }
    lastAnswer_ = granted(question, mistake, now);
    return *lastAnswer_;
}

IdentityProviderState::Answer IdentityProviderState::granted(const AuthorizationQuestion& question,
                                                             std::optional<Mistake> mistake, Date now) {
    Answer answer{question.redirectURL,
                  {{"code", makeOpaqueToken()},
                   {"id_token", identityToken(options, user, question.nonce, mistake, now)},
                   {"state", mistake == Mistake::wrongState ? otherState(question.state) : question.state}}};
    if (consents.insert(user.subject).second) {
        answer.fields.emplace_back("user", userRecord(user, mistake));
    }
    return answer;
}

} // namespace tovrel::testing
