#pragma once

#include <TovrelTesting/BackEnd/CurlClient.hpp>
#include <TovrelTesting/TovrelTesting.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tovrel::testing {

/// A back end with a route, and a client that trusts it. After every test nothing may be left open.
class BackEndFixture : public ::testing::Test {
protected:
    static constexpr std::chrono::seconds deadline{10};

    void startWith(const LocalBackEndOptions& options) {
        client.reset();
        backEnd = LocalBackEnd::start(options);
        client = std::make_unique<CurlClient>(*backEnd);
        backEnd->on("GET", "/hello", [](const ReceivedRequest&) { return ScriptedResponse::text("Hello, world"); });
        backEnd->on("POST", "/echo",
                    [](const ReceivedRequest& request) { return ScriptedResponse::text(request.body); });
    }

    void SetUp() override { startWith(LocalBackEndOptions()); }

    void TearDown() override {
        client.reset();
        if (backEnd) {
            const auto isQuiet = [](const BackEndStatistics& now) {
                return now.connectionsOpen == 0 && now.exchangesInProgress == 0 && now.exchangesStalled == 0;
            };
            EXPECT_TRUE(isQuiet(backEnd->waitUntil(isQuiet, deadline))) << "Something is still open at the back end.";
        }
    }

    CurlRequest requestFor(const std::string& target, long version = CURL_HTTP_VERSION_1_1) const {
        CurlRequest request(backEnd->url(target));
        request.version = version;
        return request;
    }

    CurlResult get(const std::string& target, long version = CURL_HTTP_VERSION_1_1) {
        return client->perform(requestFor(target, version));
    }

    std::unique_ptr<LocalBackEnd> backEnd;
    std::unique_ptr<CurlClient> client;
};

/// The same over both protocol versions.
class BackEndOverBothVersions : public BackEndFixture, public ::testing::WithParamInterface<long> {
protected:
    CurlRequest requestFor(const std::string& target) const { return BackEndFixture::requestFor(target, GetParam()); }

    CurlResult get(const std::string& target) { return BackEndFixture::get(target, GetParam()); }

    bool isHttp2() const { return GetParam() == CURL_HTTP_VERSION_2TLS; }
};

inline std::string versionName(const ::testing::TestParamInfo<long>& info) {
    return info.param == CURL_HTTP_VERSION_2TLS ? "HTTP2" : "HTTP1";
}

inline const auto bothVersions = ::testing::Values(CURL_HTTP_VERSION_1_1, CURL_HTTP_VERSION_2TLS);

} // namespace tovrel::testing
