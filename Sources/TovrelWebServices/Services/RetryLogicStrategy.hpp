#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// The retry policy that a request carries. An object serves one request at a time.
class TOVREL_EXPORT RetryLogicStrategy {
public:
    virtual ~RetryLogicStrategy();

    /// Whether one more retry is allowed now.
    [[nodiscard]] virtual bool shouldRetry() const = 0;

    /// The wait before a retry; called once before each.
    ///
    /// @throws CancellationError when the task is cancelled meanwhile.
    [[nodiscard]] virtual Async<void> willRetry() = 0;

protected:
    RetryLogicStrategy();
};

} // namespace tovrel
