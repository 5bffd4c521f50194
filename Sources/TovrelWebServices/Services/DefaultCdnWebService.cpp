#include <TovrelWebServices/Services/DefaultCdnWebService.hpp>
#include <TovrelWebServices/Services/Private/AccountsAccess.hpp>

#include <utility>

namespace tovrel {

std::shared_ptr<DefaultCdnWebService>
DefaultCdnWebService::make(std::shared_ptr<TovrelAccountsWebService> accountsWebService) {
    return std::shared_ptr<DefaultCdnWebService>(new DefaultCdnWebService(std::move(accountsWebService)));
}

std::shared_ptr<DefaultCdnWebService> DefaultCdnWebService::make(const TovrelAccountsClient& client,
                                                                 std::shared_ptr<TovrelAccountsStorage> storage,
                                                                 std::shared_ptr<WebRequestExecutor> executor) {
    return make(detail::AccountsAccess::make(client, std::move(storage), std::move(executor)));
}

std::shared_ptr<DefaultCdnWebService> DefaultCdnWebService::make(const Services& services) {
    return make(detail::AccountsAccess::find(services));
}

DefaultCdnWebService::DefaultCdnWebService(std::shared_ptr<TovrelAccountsWebService> accountsWebService)
    : accountsWebService_(std::move(accountsWebService)) {}

DefaultCdnWebService::~DefaultCdnWebService() = default;

std::shared_ptr<WebRequestExecutor> DefaultCdnWebService::executor() const {
    return detail::AccountsAccess::executor(*accountsWebService_);
}

TovrelCdnEnvironment DefaultCdnWebService::environment() const {
    return TovrelCdnEnvironment(detail::AccountsAccess::stage(*accountsWebService_));
}

Async<WebResponse> DefaultCdnWebService::execute(Request request) const {
    return detail::AccountsAccess::execute(accountsWebService_, std::move(request));
}

Async<CdnWebService::AnyResponse> DefaultCdnWebService::executeAny(Request request, ApiPayloadType payload) const {
    return detail::AccountsAccess::executeEnveloped(accountsWebService_, std::move(request), payload);
}

} // namespace tovrel
