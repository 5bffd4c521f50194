#include <TovrelWebServices/AccountScreens/TovrelUserAccountObservers.hpp>

namespace tovrel {

TovrelUserAccountBaseViewObserver::TovrelUserAccountBaseViewObserver() = default;

TovrelUserAccountBaseViewObserver::~TovrelUserAccountBaseViewObserver() = default;

TovrelUserAccountSignInViewObserver::TovrelUserAccountSignInViewObserver() = default;

TovrelUserAccountSignInViewObserver::~TovrelUserAccountSignInViewObserver() = default;

TovrelUserAccountManageViewObserver::TovrelUserAccountManageViewObserver() = default;

TovrelUserAccountManageViewObserver::~TovrelUserAccountManageViewObserver() = default;

TovrelUserAccountViewObserver::TovrelUserAccountViewObserver() = default;

TovrelUserAccountViewObserver::~TovrelUserAccountViewObserver() = default;

} // namespace tovrel
