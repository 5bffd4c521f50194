#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/System/Bundle.hpp>
#include <Platform/URLLoading/URLProgressObserver.hpp>
#include <TovrelContracts/AssertionCoordinator.hpp>
#include <TovrelWebServices/Services/TimesRetryLogicStrategy.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>
#include <TovrelWebServices/Transport/WebRequestConfig.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>
#include <Support/Await.hpp>
#include <Support/UserAgent.hpp>
#include <vector>

namespace tovrel::tests {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

using ApiRequest = WebRequest<RequestType::API>;
using CdnRequest = WebRequest<RequestType::CDN>;
using HttpRequest = WebRequest<RequestType::HTTP>;

std::shared_ptr<HttpRequest> request(std::string_view url) {
    return HttpRequest::make(*URL::parse(url), HttpMethod::get, ContentType::applicationJson(), 60,
                             CachePolicy::useProtocolCachePolicy);
}

std::string sentURL(const std::shared_ptr<HttpRequest>& request) {
    return request->setUpRequest().url.absoluteString();
}

std::string bodyText(const WebRequestable& request) {
    return request.body() ? request.body()->string() : "absent";
}

struct Payload {
    std::string title;
    double value = 0;

    Payload() = default;
    Payload(std::string payloadTitle, double payloadValue) : title(std::move(payloadTitle)), value(payloadValue) {}

    static constexpr auto fields() {
        return std::tuple{Field<&Payload::title, "title">{}, Field<&Payload::value, "value">{}};
    }
};

class FailingStrategy final : public RetryLogicStrategy {
public:
    [[nodiscard]] bool shouldRetry() const override { return true; }
    [[nodiscard]] Async<void> willRetry() override {
        throw std::runtime_error("no wait");
        co_return;
    }
};

} // namespace

TEST(WebRequest, StartsWithItsContentTypeAsItsOnlyHeader) {
    const auto made = HttpRequest::make(*URL::parse("https://h/x"), HttpMethod::put, ContentType::plainText(), 12.5,
                                        CachePolicy::returnCacheDataElseLoad);
    EXPECT_EQ(made->url().absoluteString(), "https://h/x");
    EXPECT_EQ(made->method(), HttpMethod::put);
    EXPECT_THAT(made->headers(), ElementsAre(Pair("Content-Type", "text/plain")));
    EXPECT_THAT(made->queryParameters(), IsEmpty());
    EXPECT_FALSE(made->body());
    EXPECT_EQ(made->timeoutInterval(), 12.5);
    EXPECT_EQ(made->cachePolicy(), CachePolicy::returnCacheDataElseLoad);
    EXPECT_FALSE(made->customDecodingStrategy());
    EXPECT_FALSE(made->shouldRetry());
}

TEST(WebRequest, IsBuiltForTheEndpointOfTheStage) {
    const auto api = ApiRequest::build(TovrelEnvironment::production, "items/latest");
    EXPECT_EQ(api->url().absoluteString(),
              "https://" + std::string(TovrelApiEnvironment::production().domain()) + "/items/latest");
    EXPECT_EQ(api->method(), HttpMethod::get);
    EXPECT_EQ(api->timeoutInterval(), 60.0);
    EXPECT_EQ(api->cachePolicy(), CachePolicy::useProtocolCachePolicy);
    EXPECT_THAT(api->headers(),
                ElementsAre(Pair("Accept-Encoding", "deflate, gzip"), Pair("Content-Type", "application/json")));

    const auto cdn = CdnRequest::build(TovrelEnvironment::test, "a.png");
    EXPECT_EQ(cdn->url().absoluteString(), "https://" + std::string(TovrelCdnEnvironment::test().domain()) + "/a.png");
    EXPECT_EQ(cdn->headers().at("Accept-Encoding"), "deflate, gzip");

    const auto http = HttpRequest::build(TovrelEnvironment::test, "files.example:8443", "a");
    EXPECT_EQ(http->url().absoluteString(), "https://files.example:8443/a");
    EXPECT_THAT(http->headers(), ElementsAre(Pair("Content-Type", "application/json")));
}

TEST(WebRequest, PercentEncodesTheResourcePathAndKeepsItsSlashes) {
    const auto url = [](std::string_view path) {
        return HttpRequest::build(TovrelEnvironment::test, "h", path)->url().absoluteString();
    };
    EXPECT_EQ(url("a b/c"), "https://h/a%20b/c");
    EXPECT_EQ(url("50%"), "https://h/50%25");
    EXPECT_EQ(url("a?b#c"), "https://h/a%3Fb%23c");
    EXPECT_EQ(url("gr\xC3\xBC\xC3\x9F"), "https://h/gr%C3%BC%C3%9F");
    EXPECT_EQ(url("/a"), "https://h//a");
    EXPECT_EQ(url(""), "https://h/");
}

TEST(WebRequest, RefusesAResourceThatGivesNoURL) {
    const auto invalidUrl = [](std::string domain, std::string_view path) {
        try {
            HttpRequest::build(TovrelEnvironment::test, std::move(domain), path);
        } catch (const WebServiceError& error) {
            return error == WebServiceError::invalidUrl();
        }
        return false;
    };
    EXPECT_TRUE(invalidUrl("h", "\xC3\x28"));
    EXPECT_TRUE(invalidUrl("no host", "a"));
    EXPECT_TRUE(invalidUrl("h:99999", "a"));
}

TEST(WebRequest, SettersChangeTheRequestInPlaceAndChainAlsoOnANewOne) {
    const auto chained =
        request("https://h/x")->setMethod(HttpMethod::post)->setHeader("X", "y")->setTimeoutInterval(1.5);
    EXPECT_EQ(chained->method(), HttpMethod::post);
    EXPECT_EQ(chained->headers().at("X"), "y");
    EXPECT_EQ(chained->setCachePolicy(CachePolicy::reloadIgnoringLocalCacheData), chained);
    EXPECT_EQ(chained->cachePolicy(), CachePolicy::reloadIgnoringLocalCacheData);
    EXPECT_EQ(chained->timeoutInterval(), 1.5);
}

TEST(WebRequest, ComparesHeaderNamesExactly) {
    const auto made = request("https://h")->setHeader("a", "1")->setHeader("A", "2")->setHeader("a", "3");
    EXPECT_THAT(made->headers(), ElementsAre(Pair("A", "2"), Pair("Content-Type", "application/json"), Pair("a", "3")));
}

TEST(WebRequest, MergesHeadersAndLetsTheNewValueWin) {
    const auto made = request("https://h")->setHeader("A", "1")->setHeaders({{"A", "2"}, {"B", "3"}});
    EXPECT_EQ(made->headers().at("A"), "2");
    EXPECT_EQ(made->headers().at("B"), "3");
    EXPECT_EQ(made->headers().at("Content-Type"), "application/json");
}

TEST(WebRequest, TakesOneAcceptedEncodingOrAListInEverySpelling) {
    const auto made = request("https://h");
    const auto sent = [&] { return made->headers().at("Accept-Encoding"); };
    made->setAcceptEncoding(AcceptEncodingType::br);
    EXPECT_EQ(sent(), "br");
    const AcceptEncodingType zstd = AcceptEncodingType::zstd;
    made->setAcceptEncoding(zstd);
    EXPECT_EQ(sent(), "zstd");
    made->setAcceptEncoding({AcceptEncodingType::gzip});
    EXPECT_EQ(sent(), "gzip");
    made->setAcceptEncoding({AcceptEncodingType::gzip, AcceptEncodingType::br});
    EXPECT_EQ(sent(), "gzip, br");
    made->setAcceptEncoding(AcceptEncodingType::default_());
    EXPECT_EQ(sent(), "deflate, gzip");
    made->setAcceptEncoding({});
    EXPECT_EQ(sent(), "");
}

TEST(WebRequest, TakesAcceptedLanguages) {
    const auto made = request("https://h")->setAcceptLanguages({AcceptLanguage("nl", 0.5), AcceptLanguage("en-US")});
    EXPECT_EQ(made->headers().at("Accept-Language"), "en-US,nl;q=0.5");
    made->setAcceptLanguages({});
    EXPECT_EQ(made->headers().at("Accept-Language"), "*");
}

TEST(WebRequest, TakesOneQueryParameterInEverySpelling) {
    const auto made = request("https://h");
    made->setQueryParameter("a", "1");
    EXPECT_THAT(made->queryParameters(), ElementsAre(Pair("a", ElementsAre("1"))));
    made->setQueryParameter("a", std::string("2"))->setQueryParameter("b", std::optional<std::string>("3"));
    EXPECT_THAT(made->queryParameters(), ElementsAre(Pair("a", ElementsAre("2")), Pair("b", ElementsAre("3"))));
    made->setQueryParameter("a", {"4", "5"})->setQueryParameter("b", std::vector<std::string>{"6"});
    EXPECT_THAT(made->queryParameters(), ElementsAre(Pair("a", ElementsAre("4", "5")), Pair("b", ElementsAre("6"))));
    made->setQueryParameter("a", std::nullopt)->setQueryParameter("b", {});
    EXPECT_THAT(made->queryParameters(), IsEmpty());
    made->setQueryParameter("c", "")->setQueryParameter("c", std::optional<std::string>());
    EXPECT_THAT(made->queryParameters(), IsEmpty());
}

TEST(WebRequest, MergesQueryParametersInEverySpelling) {
    const auto made = request("https://h")->setQueryParameter("a", {"0", "9"});
    made->setQueryParameters({{"a", {"b", "c"}}});
    EXPECT_THAT(made->queryParameters(), ElementsAre(Pair("a", ElementsAre("b", "c"))));
    made->setQueryParameters({{"a", "b"}});
    EXPECT_THAT(made->queryParameters(), ElementsAre(Pair("a", ElementsAre("b"))));
    made->setQueryParameters({{"x", "1"}, {"y", {"2"}}});
    EXPECT_THAT(made->queryParameters(),
                ElementsAre(Pair("a", ElementsAre("b")), Pair("x", ElementsAre("1")), Pair("y", ElementsAre("2"))));
    made->setQueryParameters({});
    EXPECT_EQ(made->queryParameters().size(), 3U);
    const std::map<std::string, std::string> single{{"x", "3"}};
    const std::map<std::string, std::vector<std::string>> lists{{"y", {"4", "5"}}};
    made->setQueryParameters(single)->setQueryParameters(lists);
    EXPECT_THAT(made->queryParameters(), ElementsAre(Pair("a", ElementsAre("b")), Pair("x", ElementsAre("3")),
                                                     Pair("y", ElementsAre("4", "5"))));
}

TEST(WebRequest, KeepsAnEmptyListThatIsMergedAndSendsNothingForIt) {
    const auto made = request("https://h/x")->setQueryParameter("a", "1")->setQueryParameters({{"a", {}}});
    EXPECT_THAT(made->queryParameters(), ElementsAre(Pair("a", IsEmpty())));
    EXPECT_EQ(sentURL(made), "https://h/x?");
}

TEST(WebRequest, PutsItsParametersBehindTheURLsOwnQueryAndEncodesEveryPlus) {
    EXPECT_EQ(sentURL(request("https://h/x?b=1+2")->setQueryParameter("a", {"x y"})), "https://h/x?b=1%2B2&a=x%20y");
    EXPECT_EQ(sentURL(request("https://h/x?b=1+2")), "https://h/x?b=1%2B2");
    EXPECT_EQ(sentURL(request("https://h/x")->setQueryParameter("a", "1+1=2&c")), "https://h/x?a=1%2B1%3D2%26c");
}

TEST(WebRequest, SortsItsParametersByNameAndMergesNoDuplicates) {
    EXPECT_EQ(sentURL(request("https://h/x")->setQueryParameters({{"b", {"2"}}, {"a", {"1", "3"}}})),
              "https://h/x?a=1&a=3&b=2");
    EXPECT_EQ(sentURL(request("https://h/x?a=1")->setQueryParameter("a", {"2"})), "https://h/x?a=1&a=2");
    EXPECT_EQ(sentURL(request("https://h/x")->setQueryParameters({{"a", "1"}, {"B", "2"}})), "https://h/x?B=2&a=1");
}

TEST(WebRequest, KeepsAURLWithoutAQueryAsItIs) {
    EXPECT_EQ(sentURL(request("https://h/x")), "https://h/x");
    EXPECT_EQ(sentURL(request("https://h/x#top")), "https://h/x#top");
    EXPECT_EQ(sentURL(request("https://h/x?")), "https://h/x?");
    EXPECT_EQ(sentURL(request("https://h//x/../y")), "https://h//x/../y");
}

TEST(WebRequest, ResolvesARelativeURLAgainstItsBase) {
    const auto url = URL::parse("../c?q=1", *URL::parse("https://h/a/b/"));
    ASSERT_TRUE(url);
    const auto made =
        HttpRequest::make(*url, HttpMethod::get, ContentType::plainText(), 1, CachePolicy::useProtocolCachePolicy);
    EXPECT_EQ(sentURL(made->setQueryParameter("r", "2")), "https://h/a/c?q=1&r=2");
}

TEST(WebRequest, BecomesAPlatformRequestWithAllItsParts) {
    const auto made = request("https://h/x")
                          ->setMethod(HttpMethod::delete_)
                          ->setTimeoutInterval(7)
                          ->setCachePolicy(CachePolicy::reloadIgnoringLocalAndRemoteCacheData)
                          ->setBody(Data("body"), ContentType::plainText());
    const URLRequest sent = made->buildURLRequest();
    EXPECT_EQ(sent.httpMethod, "DELETE");
    EXPECT_EQ(sent.timeoutInterval, 7);
    EXPECT_EQ(sent.cachePolicy, URLRequestCachePolicy::reloadIgnoringLocalAndRemoteCacheData);
    EXPECT_EQ(sent.body, Data("body"));
    ASSERT_NE(sent.headers.find("content-type"), nullptr);
    EXPECT_EQ(*sent.headers.find("content-type"), "text/plain");
}

TEST(WebRequest, JoinsHeadersWhoseNamesDifferOnlyInCase) {
    const URLRequest sent = request("https://h")->setHeader("X-A", "1")->setHeader("x-a", "2")->buildURLRequest();
    ASSERT_NE(sent.headers.find("X-A"), nullptr);
    EXPECT_EQ(*sent.headers.find("X-A"), "1,2");
}

TEST(WebRequest, TakesABodyOfBytesAndClearsIt) {
    const auto made = request("https://h")->setBody(Data("x=1"), ContentType::applicationFormUrlEncoded());
    EXPECT_EQ(bodyText(*made), "x=1");
    EXPECT_EQ(made->headers().at("Content-Type"), "application/x-www-form-urlencoded");
    made->setBody(std::nullopt, ContentType::plainText());
    EXPECT_FALSE(made->body());
    EXPECT_EQ(made->headers().at("Content-Type"), "text/plain");
    made->setBody(Data(""), ContentType::plainText());
    EXPECT_TRUE(made->body());
}

TEST(WebRequest, TakesABodyOfTextInAnEncoding) {
    const auto made = request("https://h");
    made->setBody("gr\xC3\xBC\xC3\x9F", TextEncoding::utf8, false, ContentType::plainText());
    EXPECT_EQ(bodyText(*made), "gr\xC3\xBC\xC3\x9F");
    made->setBody("gr\xC3\xBC\xC3\x9F", TextEncoding::isoLatin1, false, ContentType::plainText());
    EXPECT_EQ(bodyText(*made), "gr\xFC\xDF");
    made->setBody("gr\xC3\xBC\xC3\x9F", TextEncoding::ascii, true, ContentType::plainText());
    EXPECT_EQ(bodyText(*made), "gr??");
    made->setBody("a", TextEncoding::utf16, false, ContentType::plainText());
    EXPECT_EQ(bodyText(*made), std::string("\xFF\xFE"
                                           "a\0",
                                           4));
    made->setBody("gr\xC3\xBC\xC3\x9F", TextEncoding::ascii, false, ContentType::applicationJson());
    EXPECT_EQ(bodyText(*made), "absent");
    EXPECT_EQ(made->headers().at("Content-Type"), "application/json");
    made->setBody("\xC3\x28", TextEncoding::isoLatin1, true, ContentType::plainText());
    EXPECT_EQ(bodyText(*made), "absent");
}

TEST(WebRequest, TakesABodyOfAnEncodedValue) {
    const auto made = request("https://h")->setContentType(ContentType::plainText());
    made->setBody(Payload("a", 1.5), JSONEncoder());
    EXPECT_EQ(bodyText(*made), R"({"title":"a","value":1.5})");
    EXPECT_EQ(made->headers().at("Content-Type"), "application/json");
}

TEST(WebRequest, SendsNullForAnAbsentValue) {
    const auto made = request("https://h")->setContentType(ContentType::plainText());
    made->setBody(std::optional<Payload>(), JSONEncoder());
    EXPECT_EQ(bodyText(*made), "null");
    EXPECT_EQ(made->headers().at("Content-Type"), "application/json");
}

TEST(WebRequest, IsUnchangedByAValueThatCannotBeEncoded) {
    const auto made = request("https://h")->setBody(Data("old"), ContentType::plainText());
    EXPECT_THROW(made->setBody(Payload("a", std::numeric_limits<double>::infinity()), JSONEncoder()), EncodingError);
    EXPECT_EQ(bodyText(*made), "old");
    EXPECT_EQ(made->headers().at("Content-Type"), "text/plain");
}

TEST(WebRequest, ReadsItsDecodingStrategyByItsKindButGenerallyByTheGeneralDefault) {
    const auto api = ApiRequest::build(TovrelEnvironment::test, "x");
    const auto cdn = CdnRequest::build(TovrelEnvironment::test, "x");
    const auto http = request("https://h");
    EXPECT_EQ(api->decodingStrategy(), DecodingStrategy::snakeCaseAndMilliseconds());
    EXPECT_EQ(cdn->decodingStrategy(), DecodingStrategy::snakeCaseAndMilliseconds());
    EXPECT_EQ(http->decodingStrategy(), DecodingStrategy::default_());
    const std::shared_ptr<WebRequestable> general = api;
    EXPECT_EQ(general->decodingStrategy(), DecodingStrategy::default_());
}

TEST(WebRequest, ReadsACustomDecodingStrategyEitherWay) {
    const DecodingStrategy custom(KeyDecodingStrategy::useDefaultKeys(), DateDecodingStrategy::iso8601());
    const auto api = ApiRequest::build(TovrelEnvironment::test, "x")->setDecodingStrategy(custom);
    const std::shared_ptr<WebRequestable> general = api;
    EXPECT_EQ(api->decodingStrategy(), custom);
    EXPECT_EQ(general->decodingStrategy(), custom);
}

TEST(WebRequest, CallsItsObserverAfterASuccessfulWaitOnly) {
    int calls = 0;
    const auto made = request("https://h")->setWillRetryObserver([&calls] { ++calls; });
    made->setRetryStrategy(TimesRetryLogicStrategy::make(1, 0));
    EXPECT_TRUE(made->shouldRetry());
    getInTime(made->willRetry());
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(made->shouldRetry());
    made->setRetryStrategy(std::make_shared<FailingStrategy>());
    EXPECT_THROW(getInTime(made->willRetry()), std::runtime_error);
    EXPECT_EQ(calls, 1);
}

TEST(WebRequest, HandsItsProgressObserverToThePlatform) {
    const auto made = request("https://h");
    EXPECT_EQ(made->buildURLRequest().progressObserver, nullptr);
    std::vector<URLProgress> reports;
    const Executor executor = TaskPool::compute();
    EXPECT_EQ(made->setProgressObserver([&](const URLProgress& progress) { reports.push_back(progress); }, executor),
              made);
    const auto observer = made->buildURLRequest().progressObserver;
    ASSERT_NE(observer, nullptr);
    EXPECT_EQ(observer, made->progressObserver());
    EXPECT_EQ(observer->executor(), executor);
    observer->report(URLProgress(1, 2));
    EXPECT_EQ(reports, std::vector{URLProgress(1, 2)});

    made->setProgressObserver([](const URLProgress&) {});
    EXPECT_EQ(made->progressObserver()->executor(), MainActor::executor());
    made->setProgressObserver(nullptr);
    EXPECT_EQ(made->buildURLRequest().progressObserver, nullptr);
}

TEST(WebRequest, SetsStrategyAndObserverThroughTheGeneralInterfaceToo) {
    const std::shared_ptr<WebRequestable> general = request("https://h");
    EXPECT_EQ(general->setRetryStrategy(TimesRetryLogicStrategy::make(1, 0))->setWillRetryObserver(nullptr), general);
    EXPECT_TRUE(general->shouldRetry());
    getInTime(general->willRetry());
}

TEST(UserAgent, IsTheUpperCaseCodeTheVersionAndThePlatform) {
    setUserAgentForTests();
    EXPECT_EQ(WebRequestConfig::userAgent(), "WX/5.2.1 iOS");
}

TEST(UserAgent, IsSentWithApiAndCdnRequestsOnly) {
    setUserAgentForTests();
    const URLRequest api = ApiRequest::build(TovrelEnvironment::test, "x")->buildURLRequest();
    const URLRequest cdn = CdnRequest::build(TovrelEnvironment::test, "x")->buildURLRequest();
    const URLRequest http = request("https://h")->buildURLRequest();
    ASSERT_TRUE(api.headers.contains("User-Agent"));
    EXPECT_EQ(*api.headers.find("User-Agent"), "WX/5.2.1 iOS");
    ASSERT_TRUE(cdn.headers.contains("User-Agent"));
    EXPECT_EQ(*cdn.headers.find("User-Agent"), "WX/5.2.1 iOS");
    EXPECT_FALSE(http.headers.contains("User-Agent"));
}

TEST(UserAgent, StaysAsItIsWithoutAVersionOrAPlatformAndTheLogSaysWhy) {
    setUserAgentForTests();
    const auto messages = captureLog([] {
        WebRequestConfig::setUserAgent(TovrelAppIdentifier("ab"), Bundle(Bundle::InfoDictionary()), "iOS");
        WebRequestConfig::setUserAgent(TovrelAppIdentifier("ab"),
                                       Bundle(Bundle::InfoDictionary{{"CFBundleShortVersionString", std::int64_t{5}}}),
                                       "iOS");
        WebRequestConfig::setUserAgent(TovrelAppIdentifier("ab"), versionedBundle("1.0"), std::nullopt);
    });
    EXPECT_THAT(messages, ElementsAre("WebRequestConfig:12 Unable to fetch version from bundle",
                                      "WebRequestConfig:12 Unable to fetch version from bundle",
                                      "WebRequestConfig:18 Unable to find platform"));
    EXPECT_EQ(WebRequestConfig::userAgent(), "WX/5.2.1 iOS");
}

struct UnknownKind;

TEST(WebRequest, OfAnUnknownKindReportsItAndGoesOutWithoutAStepOfItsOwn) {
    std::vector<std::string> reports;
    AssertionCoordinator::setHandler([&](std::string_view message, std::string_view file, int line) {
        reports.push_back(std::string(message) + " " + std::string(file) + ":" + std::to_string(line));
    });
    const auto made = WebRequest<UnknownKind>::make(*URL::parse("https://h/x"), HttpMethod::get,
                                                    ContentType::plainText(), 1, CachePolicy::useProtocolCachePolicy);
    const URLRequest sent = made->buildURLRequest();
    AssertionCoordinator::setHandler(nullptr);
    EXPECT_THAT(reports, ElementsAre("Unsupported WebRequest Type WebRequestable:60"));
    EXPECT_EQ(sent.url.absoluteString(), "https://h/x");
    EXPECT_FALSE(sent.headers.contains("User-Agent"));
}

} // namespace tovrel::tests
