#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/System/FatalError.hpp>
#include <Platform/URLLoading/URLProgressObserver.hpp>

#include <utility>

namespace tovrel {

URLProgressObserver::URLProgressObserver(Callback callback, Executor executor)
    : callback_(std::move(callback)), executor_(std::move(executor)) {}

std::shared_ptr<const URLProgressObserver> URLProgressObserver::make(Callback callback, Executor executor) {
    if (!callback) {
        fatalError("A progress observer has a callback.");
    }
    return std::shared_ptr<const URLProgressObserver>(
        new URLProgressObserver(std::move(callback), std::move(executor)));
}

std::shared_ptr<const URLProgressObserver> URLProgressObserver::make(Callback callback) {
    return make(std::move(callback), MainActor::executor());
}

} // namespace tovrel
