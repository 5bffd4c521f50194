#pragma once

#include <TovrelWebServices/Transport/URLSessionProvider.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>

#include <exception>
#include <memory>

namespace tovrel {

/// Sends requests over the platform's URL session. It adds no header of its own and logs nothing.
class TOVREL_EXPORT URLSessionWebRequestExecutor final : public WebRequestExecutor {
public:
    /// Turns the platform's errors into the transport's vocabulary.
    class TOVREL_EXPORT ErrorMapper {
    public:
        ErrorMapper() = delete;

        /// `WebServiceError` in place of a `URLError` that says not-connected or timed-out; any other error unchanged.
        [[nodiscard]] static std::exception_ptr mapToWebServiceError(std::exception_ptr error);
    };

    /// @param sessionProvider Asked anew for every request.
    static std::shared_ptr<URLSessionWebRequestExecutor> make(std::shared_ptr<URLSessionProvider> sessionProvider);
    ~URLSessionWebRequestExecutor() override;

    [[nodiscard]] Async<WebResponse> data(std::shared_ptr<const WebRequestable> request) override;
    [[nodiscard]] Async<void> execute(std::shared_ptr<const WebRequestable> request) override;

private:
    explicit URLSessionWebRequestExecutor(std::shared_ptr<URLSessionProvider> sessionProvider);

    std::shared_ptr<URLSessionProvider> sessionProvider_;
};

} // namespace tovrel
