#include <Platform/URLLoading/Detail/ProgressReports.hpp>
#include <Platform/URLLoading/Detail/Transferring.hpp>

#include <boost/asio/associated_cancellation_slot.hpp>
#include <boost/asio/associated_executor.hpp>
#include <boost/asio/async_result.hpp>
#include <boost/asio/dispatch.hpp>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <exception>
#include <utility>

namespace tovrel {

namespace asio = boost::asio;

namespace {

/// A suspended coroutine. Its context is kept at work until it has been resumed.
template <class Handler>
class AwaitingCompletion final : public TransferCompletion {
public:
    explicit AwaitingCompletion(Handler handler)
        : handler_(std::move(handler)), work_(asio::get_associated_executor(handler_)) {}

    void complete(TransferOutcome outcome) override {
        const auto executor = work_.get_executor();
        asio::dispatch(executor, [handler = std::move(handler_), outcome = std::move(outcome)]() mutable {
            std::exception_ptr error = outcome.error ? std::make_exception_ptr(std::move(*outcome.error)) : nullptr;
            handler(std::move(error), std::move(outcome.result));
        });
    }

private:
    Handler handler_;
    asio::executor_work_guard<asio::associated_executor_t<Handler>> work_;
};

/// Starts the transfer when the coroutine is suspended. Refers to the coroutine's own variables, and takes its share of
/// the engine from it: an engine that is owned by what it owns would never go.
class Initiation {
public:
    Initiation(std::shared_ptr<TransferEngine>& engine, URLRequest& request, TransferOptions& options)
        : engine_(&engine), request_(&request), options_(&options) {}

    template <class Handler>
    void operator()(Handler handler) const {
        const std::shared_ptr<TransferEngine> engine = std::move(*engine_);
        auto slot = asio::get_associated_cancellation_slot(handler);
        auto transfer = std::make_shared<Transfer>(std::move(*request_), std::move(*options_),
                                                   std::make_unique<AwaitingCompletion<Handler>>(std::move(handler)));
        if (slot.is_connected()) {
            slot.assign([weakEngine = std::weak_ptr(engine),
                         weakTransfer = std::weak_ptr(transfer)](asio::cancellation_type /*type*/) mutable {
                if (const auto running = weakEngine.lock()) {
                    running->cancel(std::move(weakTransfer));
                }
            });
        }
        engine->submit(std::move(transfer));
    }

private:
    std::shared_ptr<TransferEngine>* engine_;
    URLRequest* request_;
    TransferOptions* options_;
};

} // namespace

Async<URLSessionResult> transfer(std::shared_ptr<TransferEngine> engine, URLRequest request, TransferOptions options) {
    options.maximumBodySize = engine->settings().maximumBodySize();
    options.allowsPlainHTTP = engine->settings().allowsPlainHTTP();
    if (request.progressObserver) {
        options.observer = std::make_shared<ProgressReports>(request, std::move(options.observer));
    }
    const Initiation initiation(engine, request, options);
    co_return co_await asio::async_initiate<const asio::use_awaitable_t<>&, void(std::exception_ptr, URLSessionResult)>(
        initiation, asio::use_awaitable);
}

} // namespace tovrel
