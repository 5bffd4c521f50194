#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/Events/Publisher.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelContracts/Service.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsClient.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsErrorResponse.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsEvent.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsLogoutReason.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsType.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsUserProfile.hpp>
#include <TovrelWebServices/Transport/WebServiceUtility.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tovrel {

class WebRequestExecutor;

/// Logs in and out, and hands out access tokens. Implementations are thread-safe, and their operations keep them alive.
class TOVREL_EXPORT TovrelAccountsWebService : public Service {
public:
    ~TovrelAccountsWebService() override;

    [[nodiscard]] virtual const TovrelAccountsClient& client() const = 0;
    [[nodiscard]] virtual std::shared_ptr<WebRequestExecutor> executor() const = 0;

    /// Every event, in the order of the steps that cause them.
    [[nodiscard]] virtual Publisher<TovrelAccountsEvent> eventPublisher() const = 0;

    /// A usable token: the stored one while it is valid, a refreshed one, or one for the client's own credentials.
    ///
    /// @throws TovrelAccountsError or WebServiceError when the server refuses; DecodingError when its answer is no
    /// token; else what the executor throws.
    [[nodiscard]] virtual Async<TovrelAccountsToken> loginWithClient() = 0;

    /// Exchanges an identity token of Sign in with Apple for a token (RFC 8693).
    ///
    /// @param user The user's identifier at Sign in with Apple.
    /// @param userProfile Name and e-mail, which the platform gives at the first sign-in only; they are kept for later.
    /// @throws as `loginWithClient`.
    [[nodiscard]] virtual Async<TovrelAccountsToken>
    loginWithApple(std::string identityToken, std::string user,
                   std::optional<TovrelAccountsUserProfile> userProfile) = 0;

    /// Forgets the token, and tells the server so when the reason is exactly `userInitiated`. Does nothing when no one
    /// is logged in.
    ///
    /// @throws what the executor throws; the token is then kept.
    [[nodiscard]] virtual Async<void> logout(TovrelAccountsLogoutReason reason) = 0;

    /// The stored token, refreshed if it has expired; absent when no one is logged in.
    ///
    /// @throws as `loginWithClient`, from the refresh.
    [[nodiscard]] virtual Async<std::optional<TovrelAccountsToken>> retrieveAccessToken() = 0;

    /// Deletes the account on the server and forgets the token.
    ///
    /// @throws what the API service throws; nothing is forgotten then.
    [[nodiscard]] virtual Async<void> deleteAccount() = 0;

    /// @throws for `appleSignIn`, what getting the profile throws.
    [[nodiscard]] virtual Async<bool> isLoggedIn(TovrelAccountsType type) = 0;

    /// For `appleSignIn` the server's profile, for `anonymous` the one of the last ID token; absent when there is none.
    ///
    /// @throws CancellationError when the caller is cancelled while it waits for the server.
    [[nodiscard]] virtual Async<std::optional<TovrelAccountsUserProfile>> userProfile(TovrelAccountsType type) = 0;

    /// Whether the Apple credential is still authorised; always true for `anonymous`. Never fails.
    [[nodiscard]] virtual Async<bool> userHasSignedUp(TovrelAccountsType type) = 0;

    /// `logout(TovrelAccountsLogoutReason::userInitiated())`
    [[nodiscard]] Async<void> logout();

    /// Whether `userProfile(type)` gives one.
    ///
    /// @throws what `userProfile(type)` throws.
    [[nodiscard]] Async<bool> hasProfile(TovrelAccountsType type);

    /// Accepts every code in the range.
    ///
    /// @throws TovrelAccountsError for any other code when there is an error response; without one, WebServiceError:
    /// invalidServerResponse (400), unauthorized (401), notFound (404), internalServerError (500), or
    /// unexpectedServerStatusCode.
    static void validateStatusCode(std::int64_t statusCode, StatusCodeRange acceptableCodes,
                                   const std::optional<TovrelAccountsErrorResponse>& errorResponse);

protected:
    TovrelAccountsWebService();
};

} // namespace tovrel
