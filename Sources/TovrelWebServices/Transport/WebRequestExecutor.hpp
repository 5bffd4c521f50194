#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Transport/WebResponse.hpp>

#include <memory>

namespace tovrel {

class WebRequestable;

/// The one way to the network: every service sends its requests through it. Implementations are thread-safe.
class TOVREL_EXPORT WebRequestExecutor {
public:
    virtual ~WebRequestExecutor();

    /// Sends the request and returns the response, whatever its status.
    ///
    /// @throws WebServiceError invalidUrl, notConnectedToInternet, timedOut or invalidServerResponse (no HTTP
    /// response); any other failure as it is.
    [[nodiscard]] virtual Async<WebResponse> data(std::shared_ptr<const WebRequestable> request) = 0;

    /// Sends the request, requires a status of 200 to 299 and drops the body.
    ///
    /// @throws WebServiceError for the status; else as `data`.
    [[nodiscard]] virtual Async<void> execute(std::shared_ptr<const WebRequestable> request) = 0;

protected:
    WebRequestExecutor();
};

} // namespace tovrel
