#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>

#include <memory>

namespace tovrel {

class WebRequestable;
class WebRequestExecutor;

/// Something that sends requests through an executor of its own. Implementations are thread-safe.
class TOVREL_EXPORT WebService {
public:
    virtual ~WebService();

    [[nodiscard]] virtual std::shared_ptr<WebRequestExecutor> executor() const = 0;

    /// Sends the request once, without retries, and drops the body.
    ///
    /// @throws WebServiceError when the status is not 200 to 299; else what the executor throws.
    [[nodiscard]] Async<void> run(std::shared_ptr<WebRequestable> request) const;

    /// Whether a request whose sending failed is to be sent again. If so, the wait of its strategy lies behind, and its
    /// observer has been called.
    ///
    /// @throws CancellationError when the wait is cancelled; it takes the place of the failure that led here.
    [[nodiscard]] static Async<bool> retryRequestIfNeeded(std::shared_ptr<WebRequestable> request);

protected:
    WebService();
};

} // namespace tovrel
