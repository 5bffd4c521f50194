#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountAlertManageable.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <exception>
#include <utility>

namespace tovrel {

namespace {

/// The device alone counts here, whatever else a host takes for a missing connection.
bool isNotConnectedToInternet(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const WebServiceError& failure) {
        return failure.kind() == WebServiceError::Kind::notConnectedToInternet;
    } catch (...) {
        return false;
    }
}

} // namespace

TovrelUserAccountAlertManageable::TovrelUserAccountAlertManageable() = default;

TovrelUserAccountAlertManageable::~TovrelUserAccountAlertManageable() = default;

Async<Outcome<void>> TovrelUserAccountAlertManageable::performOperation(Operation operation) {
    return perform(shared_from_this(), std::move(operation));
}

Async<Outcome<void>> TovrelUserAccountAlertManageable::perform(std::shared_ptr<TovrelUserAccountAlertManageable> self,
                                                               Operation operation) {
    std::exception_ptr error;
    try {
        co_await operation();
    } catch (...) {
        error = std::current_exception();
    }
    if (!error) {
        co_return Outcome<void>();
    }
    Task::spawn(MainActor::executor(), assignCurrentAlert(std::move(self), !isNotConnectedToInternet(error)));
    co_return Outcome<void>(std::move(error));
}

Async<void> TovrelUserAccountAlertManageable::assignCurrentAlert(std::shared_ptr<TovrelUserAccountAlertManageable> self,
                                                                 bool isConnected) {
    self->setCurrentAlert(isConnected ? TovrelUserAccountAlert::generalServiceError()
                                      : TovrelUserAccountAlert::connectionError());
    co_return;
}

} // namespace tovrel
