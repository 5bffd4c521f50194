#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tovrel {

/// Every text of the account screens.
enum class AccountText {
    errorAlertTitle,
    connectionErrorDescription,
    generalErrorDescription,
    signInErrorDescription,
    errorAlertButtonTitle,
    logoutAlertTitle,
    logoutAlertDescription,
    logoutAlertButtonTitle,
    deleteAlertTitle,
    deleteAlertDescription,
    deleteAlertButtonTitle,
    cancel,
    signInTitle,
    signUpTitle,
    signInDescription,
    signUpDescription,
    signUpConsent,
    appleSignIn,
    appleSignUp,
    appleContinue,
    close,
    loading,
    manageTitle,
    consentSection,
    manageAccountSection,
    marketingConsent,
    logout,
    deleteAccount
};

/// Where a text stands in the table "Localizable", its English form and what a translator has to know.
struct AccountTextEntry {
    AccountText text;
    std::string_view key;
    std::string_view defaultValue;
    std::string_view comment;
};

/// One entry per text, in the order of the enumeration.
extern const std::array<AccountTextEntry, 28> accountTexts;

/// The text in the language of this moment, looked up anew at each call.
[[nodiscard]] std::string localized(AccountText text);

} // namespace tovrel
