#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <Platform/Concurrency/MainActor.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>
#include <TovrelWebServices/Transport/ErrorPredicates.hpp>

#include <exception>
#include <utility>

namespace tovrel {

namespace {

/// What came of a request: a result, or none when its completion was let go of.
struct Answer {
    std::shared_ptr<Event> isSettled = Event::make();
    std::optional<TovrelAppleSignInResult> result;
};

/// Belongs to the completion and goes with it.
class Question {
public:
    explicit Question(std::shared_ptr<Answer> answer) : answer_(std::move(answer)) {}
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;
    ~Question() { answer_->isSettled->set(); }

    void answer(TovrelAppleSignInResult result) {
        answer_->result.emplace(std::move(result));
        answer_->isSettled->set();
    }

private:
    std::shared_ptr<Answer> answer_;
};

void ask(TovrelAppleSignInService& service, std::shared_ptr<Answer> answer) {
    service.requestAuthorization([question = std::make_shared<Question>(std::move(answer))](
                                     TovrelAppleSignInResult result) { question->answer(std::move(result)); });
}

Async<TovrelAccountsToken> authorization(std::shared_ptr<TovrelAppleSignInService> service) {
    co_await checkCancellation();
    const auto answer = std::make_shared<Answer>();
    ask(*service, answer);
    std::function<void()> cancel = [service, answer] {
        if (!answer->isSettled->isSet()) {
            service->cancelAuthorization();
        }
    };
    co_await Event::waitThrough(answer->isSettled, std::move(cancel));
    if (!answer->result) {
        throw CancellationError();
    }
    if (const auto* error = std::get_if<TovrelAppleSignInError>(&*answer->result)) {
        const std::exception_ptr failure = std::make_exception_ptr(*error);
        const bool isTaskOver = co_await isTaskCancelled();
        if (isTaskOver && isCancelled(failure)) {
            throw CancellationError();
        }
        std::rethrow_exception(failure);
    }
    co_return std::get<TovrelAccountsToken>(std::move(*answer->result));
}

} // namespace

TovrelAppleSignInService::TovrelAppleSignInService() = default;

TovrelAppleSignInService::~TovrelAppleSignInService() = default;

void TovrelAppleSignInService::cancelAuthorization() {}

Async<TovrelAccountsToken> TovrelAppleSignInService::requestAuthorization() {
    return MainActor::run(authorization(shared_from_this()));
}

} // namespace tovrel
