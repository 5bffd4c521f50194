#include <TovrelWebServices/AccountScreens/Private/AccountText.hpp>
#include <TovrelWebServices/AccountScreens/Private/ModuleResources.hpp>
#include <TovrelWebServices/Support/LocalizedString.hpp>

#include <cstddef>

namespace tovrel {

const std::array<AccountTextEntry, 28> accountTexts{
    AccountTextEntry{AccountText::errorAlertTitle, "account.user.error.alert.title", "Something Went Wrong",
                     "User account error alert title"},
    AccountTextEntry{AccountText::connectionErrorDescription, "account.user.connection.error.alert.description",
                     "Looks like there’s an issue with your internet connection. Please try again later.",
                     "User account connection error alert description"},
    AccountTextEntry{AccountText::generalErrorDescription, "account.user.general.error.alert.description",
                     "Looks like there’s an issue with the service. Please try again later.",
                     "User account general error alert description"},
    AccountTextEntry{AccountText::signInErrorDescription, "account.user.signin.error.alert.description",
                     "Looks like there’s an issue trying to sign you in. Please try again later.",
                     "Description of the sign in error alert"},
    AccountTextEntry{AccountText::errorAlertButtonTitle, "account.user.error.alert.button.title", "Okay",
                     "User account error alert button title"},
    AccountTextEntry{AccountText::logoutAlertTitle, "account.user.manage.logout.alert.title", "User Logout",
                     "User manage account logout alert title"},
    AccountTextEntry{AccountText::logoutAlertDescription, "account.user.manage.logout.alert.description",
                     "Are you sure you want to log out? You’ll be signed out of your account.",
                     "User manage account logout alert description"},
    AccountTextEntry{AccountText::logoutAlertButtonTitle, "account.user.manage.logout.alert.button.title", "Logout",
                     "User manage account logout alert button title"},
    AccountTextEntry{AccountText::deleteAlertTitle, "account.user.manage.delete.alert.title", "Delete Account",
                     "User manage account delete alert title"},
    AccountTextEntry{AccountText::deleteAlertDescription, "account.user.manage.delete.alert.description",
                     "Are you sure you want to delete your account? This action is permanent and cannot be undone.",
                     "User manage account delete alert description"},
    AccountTextEntry{AccountText::deleteAlertButtonTitle, "account.user.manage.delete.alert.button.title", "Delete",
                     "User manage account delete alert button title"},
    AccountTextEntry{AccountText::cancel, "account.user.alert.cancel.button.title", "Cancel",
                     "Title of the standard cancel button of alerts"},
    AccountTextEntry{AccountText::signInTitle, "account.user.signin.title", "Sign in to Your Account",
                     "Title of the sign in page for the user account"},
    AccountTextEntry{AccountText::signUpTitle, "account.user.signup.title", "Create Your Account",
                     "Title of the sign up page for the user account"},
    AccountTextEntry{AccountText::signInDescription, "account.user.signin.description",
                     "Sign in to access your account, manage preferences, and enjoy a personalized experience.",
                     "Description of the sign in page for the user account"},
    AccountTextEntry{AccountText::signUpDescription, "account.user.signup.description",
                     "Create your account to unlock a seamless experience. Get personalized recommendations, exclusive "
                     "offers, and faster checkouts—all in one place.",
                     "Description of the sign up page for the user account"},
    AccountTextEntry{AccountText::signUpConsent, "account.user.signup.consent",
                     "Send me emails with the latest offers and promotions.",
                     "Consent toggle information for the sign up page for the user account"},
    AccountTextEntry{
        AccountText::appleSignIn, "account.user.signin.apple.button.signin", "Sign in with Apple",
        "Caption of the button of Sign in with Apple, in the words that Apple prescribes for the language"},
    AccountTextEntry{AccountText::appleSignUp, "account.user.signin.apple.button.signup", "Sign up with Apple",
                     "Caption of the button of Sign in with Apple for new users, in the words that Apple prescribes "
                     "for the language"},
    AccountTextEntry{
        AccountText::appleContinue, "account.user.signin.apple.button.continue", "Continue with Apple",
        "Caption of the button of Sign in with Apple, neutral, in the words that Apple prescribes for the language"},
    AccountTextEntry{AccountText::close, "account.user.close.button.title", "Close",
                     "What a screen reader says for the close button of the sign in page"},
    AccountTextEntry{AccountText::loading, "account.user.loading.title", "Loading",
                     "What a screen reader says while a screen waits"},
    AccountTextEntry{AccountText::manageTitle, "account.user.manage.title", "Account Details",
                     "User manage account screen title"},
    AccountTextEntry{AccountText::consentSection, "account.user.manage.consent", "Consent",
                     "User manage account screen consent section title"},
    AccountTextEntry{AccountText::manageAccountSection, "account.user.manage.manage.account", "Manage Account",
                     "User manage account manage account section title"},
    AccountTextEntry{AccountText::marketingConsent, "account.user.manage.marketing.consent",
                     "Use Email for Marketing Purposes",
                     "User manage account screen user email for marketing purposes consent text"},
    AccountTextEntry{AccountText::logout, "account.user.manage.logout", "Logout",
                     "User manage account screen logout text"},
    AccountTextEntry{AccountText::deleteAccount, "account.user.manage.delete.account", "Delete Account",
                     "User manage account screen delete account text"},
};

std::string localized(AccountText text) {
    moduleBundle();
    const AccountTextEntry& entry = accountTexts.at(static_cast<std::size_t>(text));
    return localizedString(entry.key, entry.defaultValue, entry.comment);
}

} // namespace tovrel
