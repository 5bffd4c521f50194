#include <Platform/Coding/Date.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsToken.hpp>

#include <fmt/format.h>

namespace tovrel {

double TovrelAccountsToken::present() {
    return Date::now().secondsSince1970();
}

std::string TovrelAccountsToken::debugDescription() const {
    // "#" keeps the fraction of whole numbers.
    return fmt::format("TovrelAccountWebServiceToken {{ accessToken={}, expiresIn={:#}, refreshToken={}, "
                       "refreshExpiresIn={:#}, idToken={} }}",
                       accessToken, accessTokenExpiresIn, refreshToken.value_or("nil"), refreshTokenExpiresIn,
                       idToken.value_or(""));
}

} // namespace tovrel
