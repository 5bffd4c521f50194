#pragma once

#include "DemoBrowser.hpp"

#include <TovrelTesting/LocalDeployment.hpp>
#include <TovrelWebServices/SignIn/TovrelAppleSignInService.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>

#include <memory>

/// The services of an application, registered as hosts register them, and the local back end that they talk to.
class DemoServices {
public:
    DemoServices();
    DemoServices(const DemoServices&) = delete;
    DemoServices& operator=(const DemoServices&) = delete;
    ~DemoServices();

    [[nodiscard]] const std::shared_ptr<tovrel::TovrelAccountsWebService>& accounts() const { return accounts_; }
    [[nodiscard]] const std::shared_ptr<tovrel::TovrelAppleSignInService>& signIn() const { return signIn_; }
    [[nodiscard]] DemoBrowser& browser() const { return *browser_; }
    [[nodiscard]] tovrel::testing::LocalBackEnd& backEnd() const { return deployment_->backEnd(); }

private:
    std::unique_ptr<tovrel::testing::LocalDeployment> deployment_;
    std::shared_ptr<DemoBrowser> browser_;
    std::shared_ptr<tovrel::TovrelAccountsWebService> accounts_;
    std::shared_ptr<tovrel::TovrelAppleSignInService> signIn_;
};
