#include <TovrelWebServices/Services/DefaultApiWebService.hpp>
#include <TovrelWebServices/Services/Private/AccountsAccess.hpp>

#include <utility>

namespace tovrel {

std::shared_ptr<DefaultApiWebService>
DefaultApiWebService::make(std::shared_ptr<TovrelAccountsWebService> accountsWebService) {
    return std::shared_ptr<DefaultApiWebService>(new DefaultApiWebService(std::move(accountsWebService)));
}

std::shared_ptr<DefaultApiWebService> DefaultApiWebService::make(const TovrelAccountsClient& client,
                                                                 std::shared_ptr<TovrelAccountsStorage> storage,
                                                                 std::shared_ptr<WebRequestExecutor> executor) {
    return make(detail::AccountsAccess::make(client, std::move(storage), std::move(executor)));
}

std::shared_ptr<DefaultApiWebService> DefaultApiWebService::make(const Services& services) {
    return make(detail::AccountsAccess::find(services));
}

DefaultApiWebService::DefaultApiWebService(std::shared_ptr<TovrelAccountsWebService> accountsWebService)
    : accountsWebService_(std::move(accountsWebService)) {}

DefaultApiWebService::~DefaultApiWebService() = default;

std::shared_ptr<WebRequestExecutor> DefaultApiWebService::executor() const {
    return detail::AccountsAccess::executor(*accountsWebService_);
}

TovrelApiEnvironment DefaultApiWebService::environment() const {
    return TovrelApiEnvironment(detail::AccountsAccess::stage(*accountsWebService_));
}

Async<ApiWebService::AnyResponse> DefaultApiWebService::executeAny(Request request, ApiPayloadType payload) const {
    return detail::AccountsAccess::executeEnveloped(accountsWebService_, std::move(request), payload);
}

} // namespace tovrel
