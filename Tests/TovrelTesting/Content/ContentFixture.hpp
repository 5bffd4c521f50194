#pragma once

#include <TovrelTesting/Accounts/AccountsFixture.hpp>
#include <TovrelTesting/Content/ContentServer.hpp>

namespace tovrel::testing {

/// A content server beside an accounts server.
class ContentFixture : public AccountsFixture {
protected:
    void SetUp() override {
        AccountsFixture::SetUp();
        accessToken = login().accessToken;
        useContentWith({});
    }

    void useContentWith(const std::vector<std::string>& requiredScopes) {
        ContentServerOptions options;
        options.requiredScopes = requiredScopes;
        options.clock = [now = now] { return Date::fromSecondsSince1970(*now); };
        content = ContentServer::make(accounts, options);
        content->attachApi(*backEnd, {apiHost});
        content->attachCdn(*backEnd, {cdnHost});
    }

    CurlRequest contentRequest(const std::string& contentHost, const std::string& target,
                               std::vector<std::string> headers = {}) const {
        CurlRequest request("https://" + contentHost + target);
        request.headers = std::move(headers);
        request.headers.push_back("Authorization: Bearer " + accessToken);
        return request;
    }

    CurlResult api(const std::string& target) { return client->perform(contentRequest(apiHost, target)); }

    CurlResult cdn(const std::string& target, std::vector<std::string> headers = {}) {
        return client->perform(contentRequest(cdnHost, target, std::move(headers)));
    }

    std::string accessToken;
    std::shared_ptr<ContentServer> content;
};

} // namespace tovrel::testing
