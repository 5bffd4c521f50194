// [readme]
#include <Platform/Platform.hpp>
#include <TovrelWebServices/AccountScreens/AccountScreens.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>

using namespace tovrel;

/// Registers the accounts service, as above, and a sign-in service.
void registerServices(Services& services);

std::shared_ptr<HostingController> accountScreen;

Async<void> showAccount(std::shared_ptr<TovrelAccountsWebService> accounts) {
    using Configuration = TovrelUserAccountConfiguration;
    auto signIn = Configuration::SignIn::make()
                      ->titleFont(Configuration::ContentFont(Font::title(), Font::Weight::heavy))
                      ->signInButtonCornerRadius(25);
    const TovrelUserAccountViewBuilder builder(TovrelUserAccountsType::appleSignIn, accounts);
    const std::weak_ptr<TovrelUserAccountViewObserver> nobody;
    auto controller = co_await builder.userAccountViewController(Configuration::LoadingType::default_(), signIn,
                                                                 Configuration::ManageAccount::make(), nobody);
    accountScreen = HostingController::from(controller);
    accountScreen->window().show();
}

int main(int count, char** arguments) {
    QGuiApplication application(count, arguments);
    QtMainActor::install();
    registerServices(Services::default_());
    auto accounts = Services::default_().safeGet<TovrelAccountsWebService>();
    start<void>(MainActor::executor(), showAccount(accounts), [](Outcome<void> outcome) { outcome.value(); });
    const int status = application.exec();
    accountScreen = nullptr;
    return status;
}
// [readme]

void registerServices(Services& services) {
    const TovrelAccountsClient client("reader", "", TovrelAccountsRealm::tovrelstudios,
                                      TovrelAccountsEnvironment::production(), {"content"});
    auto executor = URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::default_());
    TovrelAccountsWebServiceProvider(client, TovrelAppIdentifier("wx"), executor, Bundle::main()).register_(services);
    const WebAuthorizationConfiguration browser(
        *URL::parse("https://identity.example/authorize"), *URL::parse("https://accounts.example/callback"),
        *URL::parse("https://accounts.example/exchange"), "com.example.reader", "https://identity.example");
    TovrelAppleSignInServiceProvider(WebAuthorizationProvider::make(browser, executor)).register_(services);
}
