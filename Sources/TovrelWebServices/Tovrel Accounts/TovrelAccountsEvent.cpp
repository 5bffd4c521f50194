#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsEvent.hpp>

#include <utility>

namespace tovrel {

TovrelAccountsEvent::TovrelAccountsEvent(Kind kind, std::optional<TovrelAccountsUserProfile> userProfile)
    : kind_(kind), userProfile_(std::move(userProfile)) {}

TovrelAccountsEvent TovrelAccountsEvent::didUpdateUserProfile(TovrelAccountsUserProfile userProfile) {
    return TovrelAccountsEvent(Kind::didUpdateUserProfile, std::move(userProfile));
}

TovrelAccountsEvent TovrelAccountsEvent::didLogin() {
    return TovrelAccountsEvent(Kind::didLogin, std::nullopt);
}

TovrelAccountsEvent TovrelAccountsEvent::didLogout() {
    return TovrelAccountsEvent(Kind::didLogout, std::nullopt);
}

TovrelAccountsEvent TovrelAccountsEvent::didDeleteAccount() {
    return TovrelAccountsEvent(Kind::didDeleteAccount, std::nullopt);
}

} // namespace tovrel
