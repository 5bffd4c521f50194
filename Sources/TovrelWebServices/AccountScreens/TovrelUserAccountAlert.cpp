#include <TovrelWebServices/AccountScreens/Private/AccountText.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountAlert.hpp>

#include <utility>

namespace tovrel {

namespace {

TovrelUserAccountAlert problem(AccountText message) {
    return TovrelUserAccountAlert(
        Alert(localized(AccountText::errorAlertTitle), localized(message),
              Alert::Button(localized(AccountText::errorAlertButtonTitle), Alert::Button::Style::cancel)));
}

} // namespace

Alert::Button Alert::Button::cancel() {
    return Button(localized(AccountText::cancel), Style::cancel);
}

TovrelUserAccountAlert::TovrelUserAccountAlert(Alert platformAlert)
    : id(QUuid::createUuid()), alert(std::move(platformAlert)) {}

TovrelUserAccountAlert TovrelUserAccountAlert::connectionError() {
    return problem(AccountText::connectionErrorDescription);
}

TovrelUserAccountAlert TovrelUserAccountAlert::generalServiceError() {
    return problem(AccountText::generalErrorDescription);
}

TovrelUserAccountAlert TovrelUserAccountAlert::appleSignInError() {
    return problem(AccountText::signInErrorDescription);
}

TovrelUserAccountAlert TovrelUserAccountAlert::logout(std::function<void()> action) {
    return TovrelUserAccountAlert(Alert(localized(AccountText::logoutAlertTitle),
                                        localized(AccountText::logoutAlertDescription),
                                        Alert::Button(localized(AccountText::logoutAlertButtonTitle),
                                                      Alert::Button::Style::default_, std::move(action)),
                                        Alert::Button::cancel()));
}

TovrelUserAccountAlert TovrelUserAccountAlert::deleteAccount(std::function<void()> action) {
    return TovrelUserAccountAlert(Alert(localized(AccountText::deleteAlertTitle),
                                        localized(AccountText::deleteAlertDescription),
                                        Alert::Button(localized(AccountText::deleteAlertButtonTitle),
                                                      Alert::Button::Style::destructive, std::move(action)),
                                        Alert::Button::cancel()));
}

} // namespace tovrel
