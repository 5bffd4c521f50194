#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <TovrelWebServices/Services/TovrelDomainWebService.hpp>
#include <TovrelWebServices/Services/TovrelEnvironment.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>

#include <memory>

namespace tovrel {

class Services;
class TovrelAccountsStorage;
class TovrelAccountsWebService;
struct TovrelAccountsClient;

namespace detail {

/// All that the API and the CDN services do through the accounts service, whose layer lies above theirs.
class AccountsAccess {
public:
    using Accounts = std::shared_ptr<TovrelAccountsWebService>;
    using AnyResponse = TovrelDomainWebService::AnyResponse;

    AccountsAccess() = delete;

    /// @param storage Null for the application's keychain.
    static Accounts make(const TovrelAccountsClient& client, std::shared_ptr<TovrelAccountsStorage> storage,
                         std::shared_ptr<WebRequestExecutor> executor);
    static Accounts find(const Services& services);
    static std::shared_ptr<WebRequestExecutor> executor(const TovrelAccountsWebService& accounts);
    static TovrelEnvironment stage(const TovrelAccountsWebService& accounts);

    /// Sends with a token until there is an answer or the retries are spent.
    static Async<WebResponse> execute(Accounts accounts, std::shared_ptr<WebRequest<RequestType::CDN>> request);

    /// As `execute`, but no body is a failure to be retried, and the answer is decoded and judged.
    template <class Kind>
    static Async<AnyResponse> executeEnveloped(Accounts accounts, std::shared_ptr<WebRequest<Kind>> request,
                                               ApiPayloadType payload);

private:
    enum class Body { optional, required };

    template <class Kind>
    static Async<WebResponse> send(Accounts accounts, std::shared_ptr<WebRequest<Kind>> request, Body body);
};

} // namespace detail
} // namespace tovrel
