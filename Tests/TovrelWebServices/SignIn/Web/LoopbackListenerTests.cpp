#include "LoopbackConnection.hpp"

#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Start.hpp>
#include <TovrelTesting/ManualClock.hpp>
#include <TovrelWebServices/SignIn/Web/Private/LoopbackListener.hpp>

#include <boost/asio/this_coro.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <Support/Await.hpp>
#include <vector>

namespace tovrel::tests {

namespace {

using detail::CallbackAnswer;
using detail::LoopbackListener;
using ::testing::HasSubstr;
using testing::ManualClock;
using ::testing::StartsWith;

using Answered = std::promise<Outcome<CallbackAnswer>>;

/// Opens and receives on one executor, as the provider does.
Async<CallbackAnswer> listen(std::shared_ptr<ManualClock> clock, std::shared_ptr<std::promise<std::uint16_t>> port) {
    const Executor executor = co_await boost::asio::this_coro::executor;
    const auto listener = LoopbackListener::open(executor, std::move(clock));
    port->set_value(listener->port());
    co_return co_await LoopbackListener::receive(listener, "right");
}

class ALoopbackListener : public AsyncTest {
protected:
    void SetUp() override {
        auto opened = std::make_shared<std::promise<std::uint16_t>>();
        Async<CallbackAnswer> listening = listen(clock, opened);
        task = std::make_unique<TaskHandle>(start<CallbackAnswer>(
            std::move(listening), [answered = answered](auto outcome) { answered->set_value(std::move(outcome)); }));
        port = opened->get_future().get();
    }

    void TearDown() override {
        task->cancel();
        AsyncTest::TearDown();
        EXPECT_TRUE(LoopbackConnection::isRefused(port));
    }

    std::string get(const std::string& target) const { return LoopbackConnection::get(port, target); }

    /// What it received in the end.
    CallbackAnswer answer() {
        std::future<Outcome<CallbackAnswer>> future = answered->get_future();
        if (future.wait_for(deadline) != std::future_status::ready) {
            throw std::runtime_error("still listening");
        }
        Outcome<CallbackAnswer> outcome = future.get();
        return outcome.value();
    }

    void expectThatItStillListens() {
        EXPECT_THAT(get("/callback?code=abc&state=right"), StartsWith("HTTP/1.1 200 "));
        EXPECT_EQ(answer(), CallbackAnswer(CallbackAnswer::Kind::code, "abc"));
    }

    std::shared_ptr<ManualClock> clock = ManualClock::make();
    std::shared_ptr<Answered> answered = std::make_shared<Answered>();
    std::unique_ptr<TaskHandle> task;
    std::uint16_t port = 0;
};

} // namespace

TEST_F(ALoopbackListener, ReceivesTheAnswerShowsItsPageAndClosesThePort) {
    EXPECT_THAT(get("/callback?code=abc&state=right"), HasSubstr("return to the application"));
    EXPECT_EQ(answer(), CallbackAnswer(CallbackAnswer::Kind::code, "abc"));
    EXPECT_TRUE(LoopbackConnection::isRefused(port));
}

TEST_F(ALoopbackListener, ListensAtOneAddressOnly) {
    EXPECT_FALSE(LoopbackConnection(port, "127.0.0.2").isConnected());
    EXPECT_TRUE(LoopbackConnection(port, "127.0.0.1").isConnected());
}

TEST_F(ALoopbackListener, SendsStrangersAway) {
    EXPECT_THAT(get("/"), StartsWith("HTTP/1.1 404 "));
    EXPECT_THAT(get("/callback?code=abc&state=wrong"), StartsWith("HTTP/1.1 400 "));
    const LoopbackConnection poster(port);
    poster.send("POST /callback?code=abc&state=right HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
                "\r\nContent-Length: 100000\r\n\r\n" + std::string(100000, 'x'));
    EXPECT_THAT(poster.receive(), StartsWith("HTTP/1.1 405 "));
    const LoopbackConnection rebound(port);
    rebound.send("GET /callback?code=abc&state=right HTTP/1.1\r\nHost: evil.example:" + std::to_string(port) +
                 "\r\n\r\n");
    EXPECT_THAT(rebound.receive(), StartsWith("HTTP/1.1 400 "));
    expectThatItStillListens();
}

TEST_F(ALoopbackListener, ReadsAHeadThatComesInPieces) {
    const LoopbackConnection slow(port);
    const std::string head =
        "GET /callback?code=abc&state=right HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) + "\r\n\r\n";
    for (const char byte : head) {
        ASSERT_TRUE(slow.send(std::string(1, byte)));
    }
    EXPECT_THAT(slow.receive(), StartsWith("HTTP/1.1 200 "));
    EXPECT_EQ(answer().value, "abc");
}

TEST_F(ALoopbackListener, ReadsNoHeadWithoutEnd) {
    const LoopbackConnection endless(port);
    endless.send("GET /callback?code=" + std::string(20000, 'a'));
    EXPECT_THAT(endless.receive(), StartsWith("HTTP/1.1 431 "));
    expectThatItStillListens();
}

TEST_F(ALoopbackListener, ForgetsWhoLeavesInTheMiddle) {
    {
        const LoopbackConnection leaving(port);
        leaving.send("GET /callback?code=abc&state=right HTTP/1.1\r\n");
    }
    expectThatItStillListens();
}

TEST_F(ALoopbackListener, LetsGoOfWhoSaysNothing) {
    const LoopbackConnection silent(port);
    silent.send("GET /callback");
    ASSERT_TRUE(clock->waitForSleepers(1));
    clock->advance(LoopbackListener::connectionTimeLimit);
    EXPECT_EQ(silent.receive(), "");
    expectThatItStillListens();
}

TEST_F(ALoopbackListener, LetsGoOfTheOldestWhenManyCome) {
    std::vector<std::unique_ptr<LoopbackConnection>> silent;
    for (std::size_t count = 0; count < LoopbackListener::mostConnections; ++count) {
        silent.push_back(std::make_unique<LoopbackConnection>(port));
    }
    EXPECT_THAT(get("/"), StartsWith("HTTP/1.1 404 "));
    EXPECT_EQ(silent.front()->receive(), "");
    EXPECT_TRUE(silent.back()->send("GET"));
    expectThatItStillListens();
}

TEST_F(ALoopbackListener, ClosesEveryConnectionWithTheAnswer) {
    const LoopbackConnection silent(port);
    const LoopbackConnection halfway(port);
    halfway.send("GET /call");
    expectThatItStillListens();
    EXPECT_EQ(silent.receive(), "");
    EXPECT_EQ(halfway.receive(), "");
}

TEST_F(ALoopbackListener, TakesTheAnswerAlsoWhenItsBringerDoesNotWait) {
    {
        const LoopbackConnection hasty(port);
        hasty.send("GET /callback?code=abc&state=right HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
                   "\r\n\r\n");
    }
    EXPECT_EQ(answer().value, "abc");
}

TEST_F(ALoopbackListener, TakesOneAnswer) {
    const std::string request =
        "GET /callback?code=abc&state=right HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) + "\r\n\r\n";
    const LoopbackConnection first(port);
    const LoopbackConnection second(port);
    first.send(request);
    second.send(request);
    const std::string pages = first.receive() + second.receive();
    EXPECT_EQ(pages.find("HTTP/1.1 200 "), pages.rfind("HTTP/1.1 200 "));
    EXPECT_EQ(answer().value, "abc");
    EXPECT_TRUE(LoopbackConnection::isRefused(port));
}

TEST_F(ALoopbackListener, EndsWhenItIsCancelled) {
    const LoopbackConnection silent(port);
    task->cancel();
    EXPECT_THROW(answer(), CancellationError);
    EXPECT_EQ(silent.receive(), "");
    EXPECT_TRUE(LoopbackConnection::isRefused(port));
}

} // namespace tovrel::tests
