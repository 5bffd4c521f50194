#include <Platform/URLLoading/SessionFixture.hpp>

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/io_context.hpp>

#include <sched.h>

namespace tovrel::testing {
namespace {

using Kind = URLError::Kind;

using URLSessionFailures = SessionOverBothVersions;
TOVREL_OVER_BOTH_VERSIONS(URLSessionFailures);

URLRequest impatient(URLRequest request, double seconds = 0.3) {
    request.timeoutInterval = seconds;
    return request;
}

TEST_P(URLSessionFailures, TellALostConnection) {
    backEnd->on("GET", "/body", [](const ReceivedRequest&) { return ScriptedResponse::generated(100'000); });
    for (const FaultPoint point : {FaultPoint::requestStart, FaultPoint::responseStart, FaultPoint::responseBody}) {
        for (const Fault& fault : {Fault::close(point), Fault::reset(point)}) {
            backEnd->inject(fault, FaultSelector::every());
            EXPECT_EQ(failure("/body"), Kind::networkConnectionLost)
                << static_cast<int>(point) << " " << static_cast<int>(fault.kind);
            backEnd->clearFaults();
        }
    }
    EXPECT_EQ(load("/hello").body, "Hello");
}

TEST_P(URLSessionFailures, TellABodyThatEndsTooEarlyOrTooLate) {
    backEnd->on("GET", "/body", [](const ReceivedRequest&) { return ScriptedResponse::generated(100'000); });
    backEnd->inject(Fault::wrongLength(10));
    EXPECT_EQ(failure("/body"), Kind::networkConnectionLost);
    backEnd->inject(Fault::truncation(FaultPoint::responseBody));
    EXPECT_EQ(failure("/body"), Kind::networkConnectionLost);
}

TEST_P(URLSessionFailures, TellWhatIsNoHTTP) {
    backEnd->inject(Fault::garbage(FaultPoint::responseStart));
    const auto kind = failure("/hello");
    EXPECT_TRUE(kind == Kind::badServerResponse || kind == Kind::networkConnectionLost);
    EXPECT_EQ(kind, GetParam() == OfferedProtocols::http1Only ? Kind::badServerResponse : Kind::networkConnectionLost);
}

TEST_P(URLSessionFailures, TellADamagedTLSRecord) {
    backEnd->inject(Fault::badTLS(FaultPoint::responseStart), FaultSelector::every());
    EXPECT_EQ(failure("/hello"), Kind::networkConnectionLost);
}

TEST_P(URLSessionFailures, TellSilence) {
    backEnd->on("GET", "/body", [](const ReceivedRequest&) { return ScriptedResponse::generated(100'000); });
    for (const FaultPoint point :
         {FaultPoint::handshake, FaultPoint::requestStart, FaultPoint::responseStart, FaultPoint::responseBody}) {
        restart(configuration());
        backEnd->inject(Fault::stall(point));
        const auto before = std::chrono::steady_clock::now();
        EXPECT_EQ(failure(impatient(requestFor("/body"))), Kind::timedOut) << static_cast<int>(point);
        EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(300));
        backEnd->clearFaults();
        backEnd->releaseStalled();
    }
}

TEST_P(URLSessionFailures, DoNotTakeSlownessForSilence) {
    backEnd->on("GET", "/slow", [](const ReceivedRequest&) { return ScriptedResponse::generated(20); });
    backEnd->inject(Fault::slowDrip(FaultPoint::responseBody, 1, std::chrono::milliseconds(60)).after(0));
    const auto before = std::chrono::steady_clock::now();
    const Loaded result = load(impatient(requestFor("/slow"), 0.6));
    ASSERT_FALSE(result.error) << result.error->what();
    EXPECT_EQ(result.body, generatedBytes(0, 20));
    EXPECT_GT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(700));
}

TEST_P(URLSessionFailures, CountTheTimeInTheQueue) {
    backEnd->inject(Fault::stall(FaultPoint::handshake), FaultSelector::every());
    URLSessionConfiguration narrow = configuration();
    narrow.maximumConnectionsPerHost = 1;
    restart(narrow);
    Loading first = begin(impatient(requestFor("/hello"), 20));
    ASSERT_TRUE(waitForStall());
    EXPECT_EQ(failure(impatient(requestFor("/hello"))), Kind::timedOut);
    EXPECT_FALSE(first.hasEnded());
    first.cancel();
    EXPECT_EQ(first.value().error, URLError::cancelled());
}

class URLSessionConnecting : public SessionFixture {
protected:
    std::optional<Kind> failureWith(ServerCertificate certificate, TLSVersions versions = TLSVersions::current) {
        LocalBackEndOptions options;
        options.certificate = certificate;
        options.tlsVersions = versions;
        start(options);
        const auto kind = failure("/hello");
        EXPECT_TRUE(backEnd->requests().empty());
        session.reset();
        return kind;
    }
};

TEST_F(URLSessionConnecting, FailsForACertificateThatIsNotTrusted) {
    EXPECT_EQ(failureWith(ServerCertificate::expired), Kind::certificateUntrusted);
    EXPECT_EQ(failureWith(ServerCertificate::otherHost), Kind::certificateUntrusted);
    EXPECT_EQ(failureWith(ServerCertificate::unknownAuthority), Kind::certificateUntrusted);
}

TEST_F(URLSessionConnecting, TrustsTheSystemsAuthoritiesAloneUnlessToldOtherwise) {
    start();
    URLSessionConfiguration distrustful = configuration();
    distrustful.additionalCertificateAuthorities.clear();
    restart(distrustful);
    EXPECT_EQ(failure("/hello"), Kind::certificateUntrusted);
}

TEST_F(URLSessionConnecting, FailsForAnOldVersionOfTLS) {
    EXPECT_EQ(failureWith(ServerCertificate::valid, TLSVersions::onlyTLS1_1), Kind::secureConnectionFailed);
}

TEST_F(URLSessionConnecting, FailsForAHandshakeThatIsNone) {
    start();
    backEnd->inject(Fault::garbage(FaultPoint::handshake));
    EXPECT_EQ(failure("/hello"), Kind::secureConnectionFailed);
    backEnd->inject(Fault::reset(FaultPoint::handshake));
    // The reset may come before the connection counts as made.
    EXPECT_THAT(failure("/hello"),
                ::testing::Optional(::testing::AnyOf(Kind::secureConnectionFailed, Kind::cannotConnectToHost)));
}

TEST_F(URLSessionConnecting, FailsWhereNobodyListens) {
    start();
    EXPECT_EQ(failure("https://127.0.0.1:1/"), Kind::cannotConnectToHost);
}

TEST_F(URLSessionConnecting, FailsForAHeadBeyondReason) {
    startHTTP1();
    backEnd->on("GET", "/head", [](const ReceivedRequest&) {
        ScriptedResponse response(200);
        for (int i = 0; i < 400; ++i) {
            response.headers.emplace_back("X-" + std::to_string(i), std::string(1000, 'x'));
        }
        return response;
    });
    EXPECT_EQ(failure("/head"), Kind::badServerResponse);
}

/// Loads from a session of its own on this thread.
Kind failureOnThisThread(const char* url) {
    boost::asio::io_context context;
    URLSessionConfiguration configuration;
    configuration.executor = context.get_executor();
    const auto session = URLSession::make(configuration);
    Kind kind = Kind::unknown;
    boost::asio::co_spawn(context, session->data(URLRequest(*URL::parse(url))),
                          [&kind](const std::exception_ptr& error, const URLSessionResult&) {
                              try {
                                  std::rethrow_exception(error);
                              } catch (const URLError& urlError) {
                                  kind = urlError.kind();
                              }
                          });
    context.run_for(std::chrono::seconds(20));
    return kind;
}

TEST_F(URLSessionConnecting, TellsWhenThereIsNoNetworkAtAll) {
    bool isAlone = false;
    std::optional<Kind> withAddress;
    std::optional<Kind> withName;
    // The new network belongs to this thread and to those that it starts.
    std::thread([&] {
        isAlone = unshare(CLONE_NEWNET) == 0;
        if (isAlone) {
            withAddress = failureOnThisThread("https://192.0.2.1/");
            withName = failureOnThisThread("https://api.example/");
        }
    }).join();
    if (!isAlone) {
        GTEST_SKIP() << "The system does not give this process a network of its own.";
    }
    EXPECT_EQ(withAddress, Kind::notConnectedToInternet);
    EXPECT_EQ(withName, Kind::notConnectedToInternet);
}

} // namespace
} // namespace tovrel::testing
