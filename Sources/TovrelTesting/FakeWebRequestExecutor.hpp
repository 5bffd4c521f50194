#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Transport/WebRequestExecutor.hpp>

#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace tovrel::testing {

/// An executor without a network: it answers each request by a script and remembers what it was asked. Thread-safe.
class TOVREL_EXPORT FakeWebRequestExecutor final : public WebRequestExecutor,
                                                   public std::enable_shared_from_this<FakeWebRequestExecutor> {
public:
    /// Answers one request; what it throws is the failure of the request.
    using Answer = std::function<WebResponse(const WebRequestable& request)>;

    static std::shared_ptr<FakeWebRequestExecutor> make();
    ~FakeWebRequestExecutor() override;

    /// Adds an answer for the next request that has none yet. A request without an answer stops the process.
    void answer(Answer answer);
    void answer(WebResponse response);
    void fail(std::exception_ptr error);

    template <class E>
    void fail(const E& error) {
        fail(std::make_exception_ptr(error));
    }

    /// Answers every request for which there is no answer of its own.
    void answerAll(Answer answer);

    /// What was sent, in order.
    [[nodiscard]] std::vector<std::shared_ptr<const WebRequestable>> requests() const;
    [[nodiscard]] std::size_t requestCount() const;

    [[nodiscard]] Async<WebResponse> data(std::shared_ptr<const WebRequestable> request) override;
    [[nodiscard]] Async<void> execute(std::shared_ptr<const WebRequestable> request) override;

private:
    FakeWebRequestExecutor();

    static Async<WebResponse> dataOf(std::shared_ptr<FakeWebRequestExecutor> self,
                                     std::shared_ptr<const WebRequestable> request);
    static Async<void> executeOn(std::shared_ptr<FakeWebRequestExecutor> self,
                                 std::shared_ptr<const WebRequestable> request);
    WebResponse respond(const std::shared_ptr<const WebRequestable>& request);

    mutable std::mutex mutex_;
    std::deque<Answer> answers_;
    Answer answerToAll_;
    std::vector<std::shared_ptr<const WebRequestable>> requests_;
};

} // namespace tovrel::testing
