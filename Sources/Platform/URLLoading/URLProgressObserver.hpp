#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URLProgress.hpp>

#include <functional>
#include <memory>

namespace tovrel {

/// Who is told how far a response's body has come, and where. Immutable; one may serve any number of requests.
///
/// It is told first when the head of the response is there and last when the whole body is. In between, reports that
/// come faster than they are taken are skipped, so that a slow observer holds nothing up. Each attempt at a request
/// begins again at zero. A redirect that is followed, an answer without a body and the answer to HEAD are not reported;
/// a response from the cache is, once and as complete.
///
/// All reports of a request are on their way before the request ends. An observer on the executor on which the request
/// is awaited has therefore seen all of them when the request resumes its caller, and none comes later.
class TOVREL_EXPORT URLProgressObserver {
public:
    /// Must not throw: that ends the process.
    using Callback = std::function<void(const URLProgress&)>;

    /// @param callback Not empty. Called on `executor`.
    static std::shared_ptr<const URLProgressObserver> make(Callback callback, Executor executor);

    /// On the main actor.
    static std::shared_ptr<const URLProgressObserver> make(Callback callback);

    [[nodiscard]] const Executor& executor() const noexcept { return executor_; }

    /// Calls the callback, here and now.
    void report(const URLProgress& progress) const noexcept { callback_(progress); }

private:
    URLProgressObserver(Callback callback, Executor executor);

    Callback callback_;
    Executor executor_;
};

} // namespace tovrel
