#pragma once

#include <Platform/Events/Subscription.hpp>
#include <Platform/URLLoading/URLSessionConfiguration.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

#include <filesystem>
#include <memory>

/// The library as a host sets it up, with a keychain in a folder of the demo. Every event that arrives is printed.
class JobClient {
public:
    JobClient(const std::filesystem::path& directory, tovrel::URLSessionConfiguration configuration);

    tovrel::TovrelAccountsWebService& accounts() const noexcept { return *accounts_; }
    const tovrel::ApiWebService& api() const noexcept { return *api_; }
    const tovrel::CdnWebService& cdn() const noexcept { return *cdn_; }

    /// What is stored; a host has no need to look.
    tovrel::TovrelAccountsStorage& storage() const noexcept { return *storage_; }

private:
    std::shared_ptr<tovrel::TovrelAccountsStorage> storage_;
    std::shared_ptr<tovrel::TovrelAccountsWebService> accounts_;
    std::shared_ptr<tovrel::ApiWebService> api_;
    std::shared_ptr<tovrel::CdnWebService> cdn_;
    tovrel::Subscription events_;
};
