#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/Start.hpp>
#include <Platform/Concurrency/TaskGroup.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <TovrelTesting/LocalSession.hpp>
#include <TovrelWebServices/Services/DefaultHttpWebService.hpp>
#include <TovrelWebServices/Services/TimesRetryLogicStrategy.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>
#include <TovrelWebServices/Transport/URLSessionWebRequestExecutor.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <Support/Await.hpp>
#include <Support/UserAgent.hpp>
#include <thread>
#include <vector>

namespace tovrel::tests {

using namespace std::chrono_literals;
using testing::Fault;
using testing::FaultPoint;
using testing::FaultSelector;
using testing::HTTPVersion;
using testing::LocalBackEnd;
using testing::LocalBackEndOptions;
using testing::ReceivedRequest;
using testing::ScriptedResponse;

namespace {

struct Item {
    std::int64_t identifier = 0;
    std::optional<Date> createdAt;

    Item() = default;

    static constexpr auto fields() {
        return std::tuple{Field<&Item::identifier, "identifier">{}, Field<&Item::createdAt, "createdAt">{}};
    }
};

const std::string apiHost(TovrelApiEnvironment::test().domain());
const std::string fileHost = "files.example";
const std::string canary = "canary-5f3a9c";

std::unique_ptr<LocalBackEnd> startBackEnd() {
    LocalBackEndOptions options;
    options.hostNames = {apiHost, fileHost};
    return LocalBackEnd::start(options);
}

/// From the service down to the socket, over TLS.
class TransportIntegration : public AsyncTest {
protected:
    std::shared_ptr<WebRequest<RequestType::HTTP>> request(std::string_view path) {
        return WebRequest<RequestType::HTTP>::build(TovrelEnvironment::test, fileHost, path);
    }

    std::unique_ptr<LocalBackEnd> backEnd_ = startBackEnd();
    std::shared_ptr<TovrelURLSessionProvider> provider_ =
        TovrelURLSessionProvider::make(testing::localSessionConfiguration(*backEnd_, {apiHost, fileHost}));
    std::shared_ptr<HttpWebService> service_ =
        DefaultHttpWebService::make(URLSessionWebRequestExecutor::make(provider_));
};

template <class T>
std::exception_ptr errorOf(Async<T> operation) {
    try {
        getInTime(std::move(operation));
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
}

} // namespace

TEST_F(TransportIntegration, SendsWhatTheRequestSaysAndDecodesWhatComesBack) {
    backEnd_->on("POST", "/items", [](const ReceivedRequest&) {
        return ScriptedResponse::json(R"({"identifier":7,"created_at":978307260000})", 201);
    });
    const auto sent = request("items")
                          ->setMethod(HttpMethod::post)
                          ->setHeader("X-Trace", "a b")
                          ->setQueryParameter("tag", {"a+b", "c d"})
                          ->setAcceptEncoding(AcceptEncodingType::default_())
                          ->setAcceptLanguages({AcceptLanguage("nl", 0.5), AcceptLanguage("en-US")})
                          ->setBody("gr\xC3\xBC\xC3\x9F", TextEncoding::utf8, false, ContentType::plainText())
                          ->setDecodingStrategy(DecodingStrategy::snakeCaseAndMilliseconds());
    const auto response = getInTime(service_->execute<Item>(sent));
    EXPECT_EQ(response.statusCode, 201);
    EXPECT_EQ(response.responseObject.identifier, 7);
    EXPECT_EQ(response.responseObject.createdAt, Date(60));

    const auto received = backEnd_->requests();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].method, "POST");
    EXPECT_EQ(received[0].target, "/items?tag=a%2Bb&tag=c%20d");
    EXPECT_EQ(received[0].host, fileHost);
    EXPECT_EQ(received[0].body, "gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(received[0].version, HTTPVersion::http2);
    EXPECT_EQ(received[0].header("x-trace"), "a b");
    EXPECT_EQ(received[0].header("accept-encoding"), "deflate, gzip");
    EXPECT_EQ(received[0].header("accept-language"), "en-US,nl;q=0.5");
    EXPECT_EQ(received[0].header("content-type"), "text/plain");
}

TEST_F(TransportIntegration, TellsTheObserverOfTheRequestHowFarEachAttemptIs) {
    backEnd_->on("GET", "/file", [](const ReceivedRequest&) { return ScriptedResponse::generated(1'000'000); });
    backEnd_->inject(Fault::truncation(FaultPoint::responseBody));
    std::vector<URLProgress> reports;
    const Executor executor = TaskPool::compute();
    const auto sent =
        request("file")
            ->setRetryStrategy(TimesRetryLogicStrategy::make(1, 0))
            ->setProgressObserver([&reports](const URLProgress& progress) { reports.push_back(progress); }, executor);
    EXPECT_EQ(getInTime(hop(executor, service_->execute(sent))).data->size(), 1'000'000U);
    ASSERT_FALSE(reports.empty());
    EXPECT_EQ(reports.back(), URLProgress(1'000'000, 1'000'000));
    EXPECT_EQ(backEnd_->requests().size(), 2U);
}

TEST_F(TransportIntegration, SendsTheUserAgentWithApiRequests) {
    setUserAgentForTests();
    backEnd_->onHost(apiHost, "GET", "/items/latest",
                     [](const ReceivedRequest&) { return ScriptedResponse::text("ok"); });
    getInTime(service_->execute(WebRequest<RequestType::API>::build(TovrelEnvironment::test, "items/latest")));
    EXPECT_EQ(backEnd_->requests().at(0).header("user-agent"), "WX/5.2.1 iOS");
}

TEST_F(TransportIntegration, GivesA404AsAResponseAndAsAnErrorToWhoWantsSuccess) {
    const WebResponse response = getInTime(service_->execute(request("nowhere")));
    EXPECT_EQ(response.statusCode, 404);
    ASSERT_TRUE(response.data);
    EXPECT_FALSE(response.data->empty());
    try {
        getInTime(service_->run(request("nowhere")));
        FAIL() << "no error";
    } catch (const WebServiceError& error) {
        EXPECT_EQ(error, WebServiceError::notFound());
    }
}

TEST_F(TransportIntegration, AcceptsAnAnswerWithoutContent) {
    backEnd_->on("DELETE", "/items/1", [](const ReceivedRequest&) { return ScriptedResponse(204); });
    getInTime(service_->run(request("items/1")->setMethod(HttpMethod::delete_)));
    const WebResponse response = getInTime(service_->execute(request("items/1")->setMethod(HttpMethod::delete_)));
    EXPECT_EQ(response.statusCode, 204);
    ASSERT_TRUE(response.data);
    EXPECT_TRUE(response.data->empty());
}

TEST_F(TransportIntegration, RetriesATransferThatBroke) {
    backEnd_->on("GET", "/items/1",
                 [](const ReceivedRequest&) { return ScriptedResponse::json(R"({"identifier":1})"); });
    backEnd_->inject(Fault::reset(FaultPoint::responseBody), FaultSelector::next());
    int retries = 0;
    const auto sent =
        request("items/1")->setRetryStrategy(TimesRetryLogicStrategy::make(2, 0))->setWillRetryObserver([&retries] {
            ++retries;
        });
    EXPECT_EQ(getInTime(service_->execute<Item>(sent)).responseObject.identifier, 1);
    EXPECT_EQ(retries, 1);
}

TEST_F(TransportIntegration, TimesOutWhenTheServerFallsSilentAndReportsItAfterTheRetries) {
    backEnd_->on("GET", "/slow", [](const ReceivedRequest&) { return ScriptedResponse::text("late"); });
    backEnd_->inject(Fault::stall(FaultPoint::responseStart), FaultSelector::every());
    int retries = 0;
    const auto sent = request("slow")
                          ->setTimeoutInterval(0.2)
                          ->setRetryStrategy(TimesRetryLogicStrategy::make(1, 0))
                          ->setWillRetryObserver([&retries] { ++retries; });
    try {
        getInTime(service_->execute(sent));
        FAIL() << "no error";
    } catch (const WebServiceError& error) {
        EXPECT_EQ(error, WebServiceError::timedOut());
    }
    EXPECT_EQ(retries, 1);
}

TEST_F(TransportIntegration, ReportsACancelledTransferAsThePlatformsError) {
    backEnd_->inject(Fault::stall(FaultPoint::responseStart));
    std::promise<std::exception_ptr> error;
    const TaskHandle task = start<WebResponse>(service_->execute(request("stalled")),
                                               [&](Outcome<WebResponse> outcome) { error.set_value(outcome.error()); });
    backEnd_->waitUntil([](const auto& statistics) { return statistics.exchangesStalled == 1; }, 10s);
    task.cancel();
    try {
        std::rethrow_exception(error.get_future().get());
    } catch (const URLError& urlError) {
        EXPECT_EQ(urlError, URLError::cancelled());
    }
}

TEST_F(TransportIntegration, LetsARequestFinishOnTheSessionThatWasReplaced) {
    backEnd_->on("GET", "/kept", [](const ReceivedRequest&) { return ScriptedResponse::text("kept"); });
    backEnd_->inject(Fault::stall(FaultPoint::responseStart));
    std::promise<std::string> body;
    start<WebResponse>(service_->execute(request("kept")), [&](Outcome<WebResponse> outcome) {
        body.set_value(outcome.hasValue() ? outcome.value().data->string() : "failed");
    });
    backEnd_->waitUntil([](const auto& statistics) { return statistics.exchangesStalled == 1; }, 10s);
    provider_->updateCache(WebRequestCacheDefinition(WebRequestCacheSize::mb(1), WebRequestCacheSize::mb(2)));
    EXPECT_EQ(getInTime(service_->execute(request("kept"))).data, Data("kept"));
    backEnd_->releaseStalled();
    EXPECT_EQ(body.get_future().get(), "kept");
    const auto received = backEnd_->requests();
    ASSERT_EQ(received.size(), 2U);
    EXPECT_NE(received[0].connection, received[1].connection);
}

TEST_F(TransportIntegration, KeepsItsConfigurationAcrossAnUpdateOfTheCache) {
    backEnd_->on("GET", "/a", [](const ReceivedRequest&) { return ScriptedResponse::text("a"); });
    provider_->updateCache(WebRequestCacheDefinition::default_());
    EXPECT_EQ(getInTime(service_->execute(request("a"))).statusCode, 200);
}

TEST_F(TransportIntegration, ServesManyCallersAtOnceWhileTheSessionIsReplaced) {
    backEnd_->on("GET", "/items/{identifier}", [](const ReceivedRequest& received) {
        return ScriptedResponse::json(R"({"identifier":)" + received.parameters.at("identifier") + "}");
    });
    TaskGroup group;
    std::vector<ChildTask<ResponseObjectWebResponse<Item>>> children;
    for (int i = 0; i < 200; ++i) {
        children.push_back(group.add(service_->execute<Item>(request("items/" + std::to_string(i)))));
        if (i % 50 == 25) {
            provider_->updateCache(WebRequestCacheDefinition::default_());
        }
    }
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(getInTime(children[static_cast<std::size_t>(i)].value()).responseObject.identifier, i);
    }
}

TEST_F(TransportIntegration, LeaksNoSecretIntoTheTextOfAnyFailure) {
    struct Failure {
        std::string name;
        std::function<void(LocalBackEnd&)> prepare;

        Failure(std::string failureName, std::function<void(LocalBackEnd&)> preparation)
            : name(std::move(failureName)), prepare(std::move(preparation)) {}
    };
    const std::vector<Failure> failures{
        Failure("refused header", [](LocalBackEnd&) {}),
        Failure("close", [](LocalBackEnd& backEnd) { backEnd.inject(Fault::close(FaultPoint::responseStart)); }),
        Failure("reset", [](LocalBackEnd& backEnd) { backEnd.inject(Fault::reset(FaultPoint::responseBody)); }),
        Failure("truncation",
                [](LocalBackEnd& backEnd) { backEnd.inject(Fault::truncation(FaultPoint::responseBody)); }),
        Failure("garbage",
                [](LocalBackEnd& backEnd) { backEnd.inject(Fault::garbage(FaultPoint::responseStart, canary)); }),
        Failure("bad TLS", [](LocalBackEnd& backEnd) { backEnd.inject(Fault::badTLS(FaultPoint::responseStart)); }),
        Failure("stall", [](LocalBackEnd& backEnd) { backEnd.inject(Fault::stall(FaultPoint::responseStart)); }),
        Failure("not JSON",
                [](LocalBackEnd& backEnd) {
                    backEnd.on("POST", "/*", [](const ReceivedRequest&) {
                        return ScriptedResponse::json("{\"identifier\": " + canary + "}");
                    });
                }),
    };
    for (const Failure& failure : failures) {
        for (const bool allowsHTTP2 : {false, true}) {
            const auto backEnd = startBackEnd();
            auto configuration = testing::localSessionConfiguration(*backEnd, {fileHost});
            configuration.allowsHTTP2 = allowsHTTP2;
            const auto service = DefaultHttpWebService::make(
                URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(std::move(configuration))));
            failure.prepare(*backEnd);
            const auto sent = request("items")
                                  ->setMethod(HttpMethod::post)
                                  ->setTimeoutInterval(0.2)
                                  ->setHeader("Authorization", "Bearer " + canary)
                                  ->setQueryParameter("token", canary)
                                  ->setBody(Data("secret=" + canary), ContentType::applicationFormUrlEncoded());
            if (failure.name == "refused header") {
                sent->setHeader("Cookie", canary + "\r\nInjected: yes");
            }
            ::testing::internal::CaptureStdout();
            ::testing::internal::CaptureStderr();
            const std::exception_ptr error = errorOf(service->execute<Item>(sent));
            const std::string output =
                ::testing::internal::GetCapturedStdout() + ::testing::internal::GetCapturedStderr();
            EXPECT_EQ(output.find(canary), std::string::npos) << failure.name;
            ASSERT_TRUE(error) << failure.name;
            try {
                std::rethrow_exception(error);
            } catch (const std::exception& thrown) {
                EXPECT_EQ(std::string(thrown.what()).find(canary), std::string::npos)
                    << failure.name << ": " << thrown.what();
            }
        }
    }
}

TEST_F(TransportIntegration, AnswersFromTheCacheAsThePolicyOfTheRequestSays) {
    backEnd_->on("GET", "/cached", [count = 0](const ReceivedRequest&) mutable {
        return ScriptedResponse::text(std::to_string(++count)).withHeader("Cache-Control", "max-age=600");
    });
    const auto body = [this](CachePolicy policy) {
        return getInTime(service_->execute(request("cached")->setCachePolicy(policy))).data->string();
    };
    EXPECT_EQ(body(CachePolicy::useProtocolCachePolicy), "1");
    EXPECT_EQ(body(CachePolicy::useProtocolCachePolicy), "1");
    EXPECT_EQ(body(CachePolicy::reloadIgnoringLocalCacheData), "2");
    EXPECT_EQ(body(CachePolicy::returnCacheDataDontLoad), "2");
    EXPECT_EQ(body(CachePolicy::reloadIgnoringLocalAndRemoteCacheData), "3");
    EXPECT_EQ(body(CachePolicy::returnCacheDataElseLoad), "3");
    EXPECT_EQ(body(CachePolicy::reloadRevalidatingCacheData), "4") << "There is nothing to confirm it by.";
}

TEST_F(TransportIntegration, PassesTheErrorOfAnAnswerThatIsNotStoredOn) {
    const auto sent = request("cached")->setCachePolicy(CachePolicy::returnCacheDataDontLoad);
    try {
        getInTime(service_->execute(sent));
        FAIL() << "There was an answer.";
    } catch (const URLError& error) {
        EXPECT_EQ(error, URLError::resourceUnavailable());
    }
    EXPECT_TRUE(backEnd_->requests().empty());
}

TEST_F(TransportIntegration, LetsRequestsUnderWayFinishWhenTheCacheIsReplaced) {
    backEnd_->on("GET", "/slow", [](const ReceivedRequest&) {
        return ScriptedResponse::text("whole").withHeader("Cache-Control", "max-age=600");
    });
    backEnd_->inject(Fault::stall(FaultPoint::responseBody));
    auto ended = std::make_shared<std::promise<std::string>>();
    const TaskHandle handle =
        start<WebResponse>(service_->execute(request("slow")),
                           [ended](Outcome<WebResponse> outcome) { ended->set_value(outcome.value().data->string()); });
    const auto isStalled = [](const testing::BackEndStatistics& now) { return now.exchangesStalled > 0; };
    ASSERT_TRUE(isStalled(backEnd_->waitUntil(isStalled, deadline)));

    const auto before = provider_->session();
    provider_->updateCache(WebRequestCacheDefinition(WebRequestCacheSize::mb(1), WebRequestCacheSize::mb(10)));
    EXPECT_NE(provider_->session(), before);
    backEnd_->releaseStalled();
    auto future = ended->get_future();
    ASSERT_EQ(future.wait_for(deadline), std::future_status::ready);
    EXPECT_EQ(future.get(), "whole");
    EXPECT_EQ(getInTime(service_->execute(request("slow"))).data->string(), "whole");
    EXPECT_EQ(backEnd_->requests().size(), 1U) << "The new session finds what the old one stored.";
}

TEST_F(TransportIntegration, ReplacesTheCacheWhileRequestsRun) {
    backEnd_->on("GET", "/items/{identifier}", [](const ReceivedRequest& received) {
        return ScriptedResponse::text(received.parameters.at("identifier")).withHeader("Cache-Control", "max-age=600");
    });
    std::atomic<bool> hasEnded = false;
    std::thread updates([&] {
        for (int i = 0; !hasEnded; ++i) {
            provider_->updateCache(
                WebRequestCacheDefinition(WebRequestCacheSize::kb(i % 3), WebRequestCacheSize::kb(300 * (i % 4))));
        }
    });
    for (int i = 0; i < 200; ++i) {
        const std::string identifier = std::to_string(i % 20);
        EXPECT_EQ(getInTime(service_->execute(request("items/" + identifier))).data->string(), identifier);
    }
    hasEnded = true;
    updates.join();
}

} // namespace tovrel::tests
