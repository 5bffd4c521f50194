#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/CancellationError.hpp>

#include <boost/asio/cancellation_state.hpp>
#include <boost/asio/this_coro.hpp>

namespace tovrel {

namespace asio = boost::asio;

Async<bool> isTaskCancelled() {
    const asio::cancellation_state state = co_await asio::this_coro::cancellation_state;
    co_return state.cancelled() != asio::cancellation_type::none;
}

Async<void> checkCancellation() {
    const bool isCancelled = co_await isTaskCancelled();
    if (isCancelled) {
        throw CancellationError();
    }
}

} // namespace tovrel
