#pragma once

#include <TovrelWebServices/Services/CdnWebService.hpp>

#include <memory>

namespace tovrel {

class Services;
class TovrelAccountsStorage;
class TovrelAccountsWebService;
struct TovrelAccountsClient;

/// The service of the CDN. It borrows token, executor and stage from an accounts service. Thread-safe.
class TOVREL_EXPORT DefaultCdnWebService final : public CdnWebService {
public:
    static std::shared_ptr<DefaultCdnWebService> make(std::shared_ptr<TovrelAccountsWebService> accountsWebService);

    /// Over an accounts service of its own, made from the same three.
    ///
    /// @param storage Null for the keychain of this application.
    static std::shared_ptr<DefaultCdnWebService> make(const TovrelAccountsClient& client,
                                                      std::shared_ptr<TovrelAccountsStorage> storage,
                                                      std::shared_ptr<WebRequestExecutor> executor);

    /// Over an accounts service that is registered in the container. If there is none, the process stops with the text
    /// of the lookup's error.
    static std::shared_ptr<DefaultCdnWebService> make(const Services& services);
    ~DefaultCdnWebService() override;

    using CdnWebService::execute;

    [[nodiscard]] std::shared_ptr<WebRequestExecutor> executor() const override;
    [[nodiscard]] TovrelCdnEnvironment environment() const override;
    [[nodiscard]] Async<WebResponse> execute(Request request) const override;
    [[nodiscard]] Async<AnyResponse> executeAny(Request request, ApiPayloadType payload) const override;

private:
    explicit DefaultCdnWebService(std::shared_ptr<TovrelAccountsWebService> accountsWebService);

    std::shared_ptr<TovrelAccountsWebService> accountsWebService_;
};

} // namespace tovrel
