#include <TovrelTesting/BackEnd/BackEndFixture.hpp>
#include <TovrelTesting/BackEnd/RawClient.hpp>

namespace tovrel::testing {

class LocalBackEndOnTheWire : public BackEndFixture {
protected:
    /// Sends a request for twelve bytes of text and returns what comes back.
    std::string exchange(Fault fault) {
        backEnd->inject(std::move(fault));
        RawClient raw(backEnd->port());
        raw.write("GET /hello HTTP/1.1\r\nHost: localhost\r\n\r\n");
        const std::string received = raw.readToEnd();
        ending = raw.ending();
        return received;
    }

    Ending ending = Ending::silence;
    const std::string head = "HTTP/1.1 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: 12\r\n\r\n";
};

TEST_F(LocalBackEndOnTheWire, ClosesWithoutAFarewell) {
    EXPECT_EQ(exchange(Fault::close(FaultPoint::responseBody)), head + "Hello,");
    EXPECT_EQ(ending, Ending::silence);
}

TEST_F(LocalBackEndOnTheWire, TruncatesWithAFarewell) {
    EXPECT_EQ(exchange(Fault::truncation(FaultPoint::responseBody)), head + "Hello,");
    EXPECT_EQ(ending, Ending::farewell);
}

TEST_F(LocalBackEndOnTheWire, TruncatesTheHeadOfAResponseThatHasNotStarted) {
    EXPECT_TRUE((head + "Hello, world").starts_with(exchange(Fault::truncation(FaultPoint::responseStart))));
    EXPECT_EQ(ending, Ending::farewell);
}

TEST_F(LocalBackEndOnTheWire, ResetsTheConnection) {
    EXPECT_TRUE((head + "Hello,").starts_with(exchange(Fault::reset(FaultPoint::responseBody))));
    EXPECT_EQ(ending, Ending::reset);
}

TEST_F(LocalBackEndOnTheWire, ResetsWithoutAByteOfAResponse) {
    EXPECT_EQ(exchange(Fault::reset(FaultPoint::requestStart)), "");
    EXPECT_EQ(ending, Ending::reset);
}

TEST_F(LocalBackEndOnTheWire, SendsTheScriptedGarbage) {
    EXPECT_EQ(exchange(Fault::garbage(FaultPoint::responseStart, "no HTTP")), "no HTTP");
    EXPECT_EQ(ending, Ending::farewell);
}

TEST_F(LocalBackEndOnTheWire, SendsARecordThatDoesNotAuthenticate) {
    EXPECT_EQ(exchange(Fault::badTLS(FaultPoint::responseBody)), head + "Hello,");
    EXPECT_EQ(ending, Ending::forgedRecord);
}

TEST_F(LocalBackEndOnTheWire, SendsTheTruthBehindAWrongLength) {
    EXPECT_TRUE(exchange(Fault::wrongLength(-5)).ends_with("Content-Length: 7\r\n\r\nHello, world"));
    EXPECT_EQ(ending, Ending::farewell);
}

TEST_F(LocalBackEndOnTheWire, AnswersPipelinedRequestsInTheirOrder) {
    RawClient raw(backEnd->port());
    raw.write("POST /echo HTTP/1.1\r\nHost: a\r\nContent-Length: 3\r\n\r\noneGET /hello HTTP/1.1\r\nHost: a\r\n"
              "Connection: close\r\n\r\n");
    const std::string received = raw.readToEnd();
    EXPECT_THAT(received, ::testing::HasSubstr("\r\n\r\noneHTTP/1.1 200 OK"));
    EXPECT_THAT(received, ::testing::EndsWith("Hello, world"));
    EXPECT_EQ(raw.ending(), Ending::farewell);
}

TEST_F(LocalBackEndOnTheWire, RefusesWhatIsNoRequest) {
    RawClient raw(backEnd->port());
    raw.write("this is no request\r\n\r\n");
    EXPECT_THAT(raw.readToEnd(), ::testing::StartsWith("HTTP/1.1 400 "));
    EXPECT_EQ(backEnd->statistics().requestsReceived, 0U);
}

TEST_F(LocalBackEndOnTheWire, ReceivesARequestInSingleBytes) {
    RawClient raw(backEnd->port());
    for (const char byte :
         std::string("POST /echo HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\nConnection: close\r\n\r\n"
                     "3\r\nabc\r\n2\r\nde\r\n0\r\nX-Sum: 5\r\n\r\n")) {
        raw.write(std::string_view(&byte, 1));
    }
    EXPECT_THAT(raw.readToEnd(), ::testing::EndsWith("\r\n\r\nabcde"));
    ASSERT_EQ(backEnd->requests().size(), 1U);
    EXPECT_EQ(backEnd->requests()[0].trailers, HeaderList({{"X-Sum", "5"}}));
}

TEST_F(LocalBackEndOnTheWire, RecordsARequestWhoseBodyNeverCame) {
    {
        RawClient raw(backEnd->port());
        raw.write("POST /echo HTTP/1.1\r\nHost: a\r\nContent-Length: 100\r\n\r\npart");
    }
    const auto requests = backEnd->waitForRequests(1, deadline);
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].received, ReceivedPart::partOfBody);
    EXPECT_EQ(requests[0].body, "part");
}

} // namespace tovrel::testing
