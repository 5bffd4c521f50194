#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelTesting/Accounts/Private/BearerToken.hpp>
#include <TovrelTesting/Accounts/Private/ProfileResource.hpp>
#include <TovrelTesting/Envelope.hpp>
#include <TovrelTesting/Private/FormParameters.hpp>
#include <TovrelTesting/Private/NoStore.hpp>

#include <tuple>
#include <utility>

namespace tovrel::testing {

namespace {

struct Profile {
    std::string identifier;
    std::optional<std::string> firstName;
    std::optional<std::string> lastName;
    std::optional<std::string> email;
    Date createdAt;

    static constexpr auto fields() {
        return std::tuple{Field<&Profile::identifier, "id">{}, Field<&Profile::firstName, "first_name">{},
                          Field<&Profile::lastName, "last_name">{}, Field<&Profile::email, "email">{},
                          Field<&Profile::createdAt, "created_at">{}};
    }
};

std::string jsonOf(const AccountsServerUser& user) {
    Profile profile;
    profile.identifier = user.identifier;
    profile.firstName = user.firstName;
    profile.lastName = user.lastName;
    profile.email = user.email;
    profile.createdAt = user.creationDate;
    JSONEncoder encoder;
    encoder.dateEncodingStrategy = DateEncodingStrategy::iso8601();
    return encoder.encode(profile).string();
}

/// The session of the request's token, with the lock held.
std::optional<AccountsServerSession> sessionOf(AccountsServerState& state, const ReceivedRequest& request, Date now) {
    const auto token = bearerToken(request);
    return token ? state.ledger.sessionOfAccessToken(*token, now) : std::nullopt;
}

ScriptedResponse noProfile() {
    return notStored(refusalEnvelope(404, "profile_not_found", "There is no profile for this login"));
}

ScriptedResponse unauthorized(const ReceivedRequest& request) {
    return notStored(unauthorizedAnswer(request));
}

} // namespace

ScriptedResponse answerProfileRequest(AccountsServerState& state, const ReceivedRequest& request) {
    const Date now = state.options.clock();
    const std::lock_guard lock(state.mutex);
    const auto session = sessionOf(state, request, now);
    if (!session) {
        return unauthorized(request);
    }
    if (!session->userIdentifier) {
        return noProfile();
    }
    ++state.counts.profilesRead;
    const AccountsServerUser user = state.users.find(*session->userIdentifier).value();
    return notStored(envelope(jsonOf(user)));
}

ScriptedResponse answerProfileDeletion(AccountsServerState& state, const ReceivedRequest& request) {
    const Date now = state.options.clock();
    const std::lock_guard lock(state.mutex);
    const auto session = sessionOf(state, request, now);
    if (!session) {
        return unauthorized(request);
    }
    if (!session->userIdentifier) {
        return noProfile();
    }
    const auto query = FormParameters::parse(request.query());
    if (!query || query->value("confirm") != "true") {
        return notStored(refusalEnvelope(400, "confirmation_required", "Deletion has to be confirmed"));
    }
    state.ledger.end(
        [&](const AccountsServerSession& other) { return other.userIdentifier == session->userIdentifier; });
    state.users.remove(*session->userIdentifier);
    ++state.counts.profilesDeleted;
    return notStored(envelope("{}"));
}

} // namespace tovrel::testing
