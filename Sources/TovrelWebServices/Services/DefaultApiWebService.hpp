#pragma once

#include <TovrelWebServices/Services/ApiWebService.hpp>

#include <memory>

namespace tovrel {

class Services;
class TovrelAccountsStorage;
class TovrelAccountsWebService;
struct TovrelAccountsClient;

/// The service of the API. It borrows token, executor and stage from an accounts service. Thread-safe.
class TOVREL_EXPORT DefaultApiWebService final : public ApiWebService {
public:
    static std::shared_ptr<DefaultApiWebService> make(std::shared_ptr<TovrelAccountsWebService> accountsWebService);

    /// Over an accounts service of its own, made from the same three.
    ///
    /// @param storage Null for the keychain of this application.
    static std::shared_ptr<DefaultApiWebService> make(const TovrelAccountsClient& client,
                                                      std::shared_ptr<TovrelAccountsStorage> storage,
                                                      std::shared_ptr<WebRequestExecutor> executor);

    /// Over an accounts service that is registered in the container. If there is none, the process stops with the text
    /// of the lookup's error.
    static std::shared_ptr<DefaultApiWebService> make(const Services& services);
    ~DefaultApiWebService() override;

    [[nodiscard]] std::shared_ptr<WebRequestExecutor> executor() const override;
    [[nodiscard]] TovrelApiEnvironment environment() const override;
    [[nodiscard]] Async<AnyResponse> executeAny(Request request, ApiPayloadType payload) const override;

private:
    explicit DefaultApiWebService(std::shared_ptr<TovrelAccountsWebService> accountsWebService);

    std::shared_ptr<TovrelAccountsWebService> accountsWebService_;
};

} // namespace tovrel
