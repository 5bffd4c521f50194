#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <QZFrameworkCoreLogic/Dependency.hpp>
#include <TovrelWebServices/Services/Private/AccountsAccess.hpp>
#include <TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.hpp>
#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <cstddef>
#include <exception>
#include <utility>

namespace tovrel::detail {

namespace {

/// The reason of a logout that the server forces; it has no name among the reasons.
constexpr TovrelAccountsLogoutReason forcedByServer(2);

/// Up to this size decoding takes less time than a change of threads and is no burden to the caller's.
constexpr std::size_t smallBody = std::size_t{16} * 1024;

Async<TovrelDomainWebService::AnyResponse> validated(WebResponse response, JSONDecoder decoder,
                                                     ApiPayloadType payload) {
    const Data body = *response.data;
    co_return TovrelDomainWebService::validatedTovrelResponse(std::move(response), body, decoder, payload);
}

} // namespace

AccountsAccess::Accounts AccountsAccess::make(const TovrelAccountsClient& client,
                                              std::shared_ptr<TovrelAccountsStorage> storage,
                                              std::shared_ptr<WebRequestExecutor> executor) {
    if (!storage) {
        storage = KeychainTovrelAccountsStorage::make(Keychain());
    }
    return DefaultTovrelAccountsWebService::make(client, std::move(storage), std::move(executor));
}

AccountsAccess::Accounts AccountsAccess::find(const Services& services) {
    return Dependency<TovrelAccountsWebService>(services).get();
}

std::shared_ptr<WebRequestExecutor> AccountsAccess::executor(const TovrelAccountsWebService& accounts) {
    return accounts.executor();
}

TovrelEnvironment AccountsAccess::stage(const TovrelAccountsWebService& accounts) {
    return accounts.client().environment.environment();
}

template <class Kind>
Async<WebResponse> AccountsAccess::send(Accounts accounts, std::shared_ptr<WebRequest<Kind>> request, Body body) {
    while (true) {
        const TovrelAccountsToken token = co_await accounts->loginWithClient();
        request->setHeader("Authorization", token.tokenType + " " + token.accessToken);
        WebResponse response;
        std::exception_ptr failure;
        try {
            const std::shared_ptr<WebRequestExecutor> executor = accounts->executor();
            response = co_await executor->data(request);
            if (!response.data && body == Body::required) {
                throw WebServiceError::invalidServerResponse();
            }
        } catch (...) {
            failure = std::current_exception();
        }
        if (!failure) {
            if (response.statusCode == 401) {
                co_await accounts->logout(forcedByServer);
                throw WebServiceError::unauthorized();
            }
            co_return response;
        }
        const bool isSentAgain = co_await WebService::retryRequestIfNeeded(request);
        if (!isSentAgain) {
            std::rethrow_exception(failure);
        }
    }
}

Async<WebResponse> AccountsAccess::execute(Accounts accounts, std::shared_ptr<WebRequest<RequestType::CDN>> request) {
    return send(std::move(accounts), std::move(request), Body::optional);
}

template <class Kind>
Async<AccountsAccess::AnyResponse>
AccountsAccess::executeEnveloped(Accounts accounts, std::shared_ptr<WebRequest<Kind>> request, ApiPayloadType payload) {
    WebResponse response = co_await send(std::move(accounts), request, Body::required);
    JSONDecoder decoder = request->decodingStrategy().jsonDecoder();
    if (response.data->size() <= smallBody) {
        const Data body = *response.data;
        co_return TovrelDomainWebService::validatedTovrelResponse(std::move(response), body, decoder, payload);
    }
    Async<AnyResponse> validation = validated(std::move(response), std::move(decoder), payload);
    co_return co_await hop(TaskPool::compute(), std::move(validation));
}

template Async<AccountsAccess::AnyResponse>
    AccountsAccess::executeEnveloped(Accounts, std::shared_ptr<WebRequest<RequestType::API>>, ApiPayloadType);
template Async<AccountsAccess::AnyResponse>
    AccountsAccess::executeEnveloped(Accounts, std::shared_ptr<WebRequest<RequestType::CDN>>, ApiPayloadType);

} // namespace tovrel::detail
