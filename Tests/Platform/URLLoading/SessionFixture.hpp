#pragma once

#include <Platform/Concurrency/Start.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <Platform/URLLoading/URLSession.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <future>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <thread>
#include <utility>

namespace tovrel {

/// For messages of failed expectations.
inline void PrintTo(const URLError& error, std::ostream* stream) {
    *stream << error.what();
}

namespace testing {

/// What became of a request: an error, or everything that a response tells.
struct Loaded {
    std::optional<URLError> error;
    int status = 0;
    HTTPHeaders fields;
    std::string body;
    std::string version;
    std::string url;
    HTTPURLResponse::Source source = HTTPURLResponse::Source::network;

    Loaded() = default;

    std::string field(std::string_view name) const {
        const std::string* value = fields.find(name);
        return value != nullptr ? *value : "(none)";
    }
};

/// A request under way.
class Loading {
public:
    Loading(TaskHandle task, std::future<Loaded> loaded) : task_(std::move(task)), loaded_(std::move(loaded)) {}

    void cancel() { task_.cancel(); }

    bool hasEnded(std::chrono::milliseconds within = std::chrono::milliseconds(0)) const {
        return loaded_.wait_for(within) == std::future_status::ready;
    }

    Loaded value() {
        constexpr std::chrono::seconds deadline(20);
        if (!hasEnded(deadline)) {
            ADD_FAILURE() << "The request has not ended.";
            std::terminate();
        }
        return loaded_.get();
    }

private:
    TaskHandle task_;
    std::future<Loaded> loaded_;
};

/// A session against a local back end. After every test no descriptor, task or exchange may be left.
class SessionFixture : public ::testing::Test {
protected:
    static constexpr std::chrono::seconds deadline{10};
    /// No error may ever show it.
    static constexpr const char* secret = "canary-4711";

    void SetUp() override {
        warmUp();
        descriptorsBefore_ = openDescriptors();
        tasksBefore_ = Task::countOfRunning();
    }

    void TearDown() override {
        session.reset();
        if (backEnd) {
            backEnd->releaseStalled();
            const auto isQuiet = [](const BackEndStatistics& now) {
                return now.connectionsOpen == 0 && now.exchangesInProgress == 0;
            };
            EXPECT_TRUE(isQuiet(backEnd->waitUntil(isQuiet, deadline))) << "Something is still open at the back end.";
            backEnd.reset();
        }
        const auto end = std::chrono::steady_clock::now() + deadline;
        while ((openDescriptors() > descriptorsBefore_ || Task::countOfRunning() != tasksBefore_) &&
               std::chrono::steady_clock::now() < end) {
            std::this_thread::yield();
        }
        // Fewer are none lost: what warmed the process up may still have been closing its own.
        EXPECT_LE(openDescriptors(), descriptorsBefore_);
        EXPECT_EQ(Task::countOfRunning(), tasksBefore_);
    }

    static std::size_t openDescriptors() {
        const std::filesystem::directory_iterator entries("/proc/self/fd");
        return static_cast<std::size_t>(std::distance(entries, std::filesystem::directory_iterator()));
    }

    /// Starts a back end and a session that trusts it and finds "api.example" and "other.example" there.
    void start(LocalBackEndOptions options = LocalBackEndOptions()) {
        options.hostNames = {"api.example", "other.example"};
        backEnd = LocalBackEnd::start(options);
        backEnd->on("*", "/hello", [](const ReceivedRequest&) { return ScriptedResponse::text("Hello"); });
        backEnd->on("*", "/echo", [](const ReceivedRequest& request) { return ScriptedResponse::text(request.body); });
        session = URLSession::make(configuration());
    }

    void startHTTP1() {
        LocalBackEndOptions options;
        options.protocols = OfferedProtocols::http1Only;
        start(options);
    }

    URLSessionConfiguration configuration() const {
        URLSessionConfiguration result;
        result.additionalCertificateAuthorities.push_back(backEnd->certificateAuthorityPem());
        for (const char* host : {"api.example", "other.example"}) {
            result.connectionOverrides.emplace_back(host, 443, "127.0.0.1", backEnd->port());
            if (backEnd->plainPort() != 0) {
                result.connectionOverrides.emplace_back(host, 80, "127.0.0.1", backEnd->plainPort());
            }
        }
        return result;
    }

    void restart(const URLSessionConfiguration& changed) { session = URLSession::make(changed); }

    static URLRequest requestFor(const std::string& target, const char* method = "GET") {
        const std::string url = target.find("://") == std::string::npos ? "https://api.example" + target : target;
        URLRequest request(*URL::parse(url));
        request.httpMethod = method;
        request.headers.add("Authorization", std::string("Bearer ") + secret);
        return request;
    }

    static URLRequest upload(const std::string& target, std::string body, const char* method = "POST") {
        URLRequest request = requestFor(target, method);
        request.body = Data(body);
        return request;
    }

    Loading begin(URLRequest request) const { return begin(session, std::move(request)); }

    static Loading begin(const std::shared_ptr<URLSession>& session, URLRequest request) {
        auto promise = std::make_shared<std::promise<Loaded>>();
        auto future = promise->get_future();
        auto task = tovrel::start<URLSessionResult>(
            session->data(std::move(request)),
            [promise](Outcome<URLSessionResult> outcome) { promise->set_value(loaded(std::move(outcome))); });
        return Loading(std::move(task), std::move(future));
    }

    Loaded load(URLRequest request) const { return begin(std::move(request)).value(); }
    Loaded load(const std::string& target) const { return load(requestFor(target)); }

    /// The kind of the error that the request ends with.
    std::optional<URLError::Kind> failure(URLRequest request) const {
        const Loaded result = load(std::move(request));
        return result.error ? std::optional<URLError::Kind>(result.error->kind()) : std::nullopt;
    }
    std::optional<URLError::Kind> failure(const std::string& target) const { return failure(requestFor(target)); }

    bool waitFor(const std::function<bool(const BackEndStatistics&)>& condition) const {
        return condition(backEnd->waitUntil(condition, deadline));
    }

    bool waitForStall() const {
        return waitFor([](const BackEndStatistics& now) { return now.exchangesStalled > 0; });
    }

    std::unique_ptr<LocalBackEnd> backEnd;
    std::shared_ptr<URLSession> session;

private:
    static Async<void> nothing() { co_return; }

    /// The pool's threads and what they hold stay once there, so they must be there before anything is counted.
    static void warmUp() {
        URLSession::make(URLSessionConfiguration());
        tovrel::get(nothing());
    }

    static Loaded loaded(Outcome<URLSessionResult> outcome) {
        Loaded result;
        try {
            URLSessionResult& value = outcome.value();
            const auto& response = dynamic_cast<const HTTPURLResponse&>(*value.response);
            result.status = response.statusCode();
            result.fields = response.allHeaderFields();
            result.body = value.data.value().string();
            result.version = response.httpVersion();
            result.url = response.url().absoluteString();
            result.source = response.source();
        } catch (const URLError& error) {
            EXPECT_EQ(std::string(error.what()).find(secret), std::string::npos) << error.what();
            result.error = error;
        } catch (const std::exception& error) {
            ADD_FAILURE() << "Not a URLError: " << error.what();
        }
        return result;
    }

    std::size_t descriptorsBefore_ = 0;
    std::size_t tasksBefore_ = 0;
};

/// The same over both versions of the protocol.
class SessionOverBothVersions : public SessionFixture, public ::testing::WithParamInterface<OfferedProtocols> {
protected:
    void SetUp() override {
        SessionFixture::SetUp();
        LocalBackEndOptions options;
        options.protocols = GetParam();
        options.plainListener = PlainListener::present;
        start(options);
    }

    static const char* version() { return GetParam() == OfferedProtocols::http1Only ? "HTTP/1.1" : "HTTP/2"; }
};

inline std::string versionName(const ::testing::TestParamInfo<OfferedProtocols>& info) {
    return info.param == OfferedProtocols::http1Only ? "HTTP1" : "HTTP2";
}

} // namespace testing
} // namespace tovrel

#define TOVREL_OVER_BOTH_VERSIONS(suite)                                                                               \
    INSTANTIATE_TEST_SUITE_P(Versions, suite,                                                                          \
                             ::testing::Values(OfferedProtocols::http1Only, OfferedProtocols::http2Only), versionName)
