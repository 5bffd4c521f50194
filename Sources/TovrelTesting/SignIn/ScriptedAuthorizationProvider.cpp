#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelTesting/SignIn/ScriptedAuthorizationProvider.hpp>

#include <utility>

namespace tovrel::testing {

std::shared_ptr<ScriptedAuthorizationProvider> ScriptedAuthorizationProvider::make() {
    return Self(new ScriptedAuthorizationProvider());
}

ScriptedAuthorizationProvider::ScriptedAuthorizationProvider() = default;

ScriptedAuthorizationProvider::~ScriptedAuthorizationProvider() = default;

void ScriptedAuthorizationProvider::answer(AuthorizationCredential credential) {
    add(std::move(credential));
}

void ScriptedAuthorizationProvider::answer(AppleIDCredential credential) {
    add(AuthorizationCredential::appleID(std::move(credential)));
}

void ScriptedAuthorizationProvider::fail(std::exception_ptr error) {
    add(std::move(error));
}

void ScriptedAuthorizationProvider::add(Answer answer) {
    const std::scoped_lock lock(mutex_);
    answers_.push_back(std::move(answer));
}

void ScriptedAuthorizationProvider::hold() {
    const std::scoped_lock lock(mutex_);
    if (!gate_) {
        gate_ = Event::make();
    }
}

void ScriptedAuthorizationProvider::release() {
    std::shared_ptr<Event> gate;
    {
        const std::scoped_lock lock(mutex_);
        gate.swap(gate_);
    }
    if (gate) {
        gate->set();
    }
}

void ScriptedAuthorizationProvider::presentSheet() {
    const std::scoped_lock lock(mutex_);
    isSheetPresented_ = true;
}

void ScriptedAuthorizationProvider::setCredentialState(std::string user, TovrelAppleCredentialState state) {
    const std::scoped_lock lock(mutex_);
    states_[std::move(user)] = state;
}

std::vector<AuthorizationRequest> ScriptedAuthorizationProvider::requests() const {
    const std::scoped_lock lock(mutex_);
    return requests_;
}

std::size_t ScriptedAuthorizationProvider::requestCount() const {
    const std::scoped_lock lock(mutex_);
    return requests_.size();
}

std::size_t ScriptedAuthorizationProvider::cancelledCount() const {
    const std::scoped_lock lock(mutex_);
    return cancelledCount_;
}

std::vector<std::shared_ptr<Window>> ScriptedAuthorizationProvider::anchors() const {
    const std::scoped_lock lock(mutex_);
    return anchors_;
}

std::vector<std::string> ScriptedAuthorizationProvider::credentialStateRequests() const {
    const std::scoped_lock lock(mutex_);
    return credentialStateRequests_;
}

Async<AuthorizationCredential>
ScriptedAuthorizationProvider::authorize(AuthorizationRequest request,
                                         std::shared_ptr<AuthorizationPresentation> presentation) {
    return answerOf(shared_from_this(), std::move(request), std::move(presentation));
}

Async<TovrelAppleCredentialState> ScriptedAuthorizationProvider::credentialState(std::string user) {
    return stateOf(shared_from_this(), std::move(user));
}

Async<AuthorizationCredential>
ScriptedAuthorizationProvider::answerOf(Self self, AuthorizationRequest request,
                                        std::shared_ptr<AuthorizationPresentation> presentation) {
    std::shared_ptr<Event> gate;
    bool isSheet = false;
    const Answer answer = self->begin(std::move(request), gate, isSheet);
    if (isSheet) {
        std::shared_ptr<Window> anchor = presentation->presentationAnchor();
        const std::scoped_lock lock(self->mutex_);
        self->anchors_.push_back(std::move(anchor));
    }
    if (gate) {
        try {
            co_await Event::wait(std::move(gate));
        } catch (const CancellationError&) {
            const std::scoped_lock lock(self->mutex_);
            ++self->cancelledCount_;
            throw;
        }
    }
    if (const auto* error = std::get_if<std::exception_ptr>(&answer)) {
        std::rethrow_exception(*error);
    }
    co_return std::get<AuthorizationCredential>(answer);
}

Async<TovrelAppleCredentialState> ScriptedAuthorizationProvider::stateOf(Self self, std::string user) {
    const std::scoped_lock lock(self->mutex_);
    self->credentialStateRequests_.push_back(user);
    const auto found = self->states_.find(user);
    co_return found == self->states_.end() ? TovrelAppleCredentialState::notFound : found->second;
}

ScriptedAuthorizationProvider::Answer
ScriptedAuthorizationProvider::begin(AuthorizationRequest request, std::shared_ptr<Event>& gate, bool& isSheet) {
    const std::scoped_lock lock(mutex_);
    requests_.push_back(std::move(request));
    if (answers_.empty()) {
        fatalError("An authorization has no answer in the script.");
    }
    Answer answer = std::move(answers_.front());
    answers_.pop_front();
    gate = gate_;
    isSheet = isSheetPresented_;
    return answer;
}

} // namespace tovrel::testing
