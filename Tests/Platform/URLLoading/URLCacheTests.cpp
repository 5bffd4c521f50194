#include <Platform/URLLoading/CacheFixture.hpp>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

namespace tovrel::testing {
namespace {

class ResponseCache : public CacheFixture {};

const HeaderLine minute("Cache-Control", "max-age=60");

TEST_F(ResponseCache, AnswersFromMemoryWhileAResponseIsFresh) {
    serve("/a", {minute, {"X-Kept", "yes"}});
    EXPECT_EQ(load(plain("/a")).source, Source::network);
    date->advance(59);
    const Loaded second = load(plain("/a#part"));
    EXPECT_EQ(second.source, Source::cache);
    EXPECT_EQ(second.body, "1");
    EXPECT_EQ(second.status, 200);
    EXPECT_EQ(second.field("x-kept"), "yes");
    EXPECT_EQ(second.field("age"), "59");
    EXPECT_EQ(second.url, "https://api.example/a#part");
    EXPECT_EQ(second.version, "HTTP/2");
    date->advance(1);
    EXPECT_EQ(body("/a"), "2");
}

TEST_F(ResponseCache, AnswersFromDiskInANewProcess) {
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    restartProcess();
    const Loaded result = load(plain("/a"));
    EXPECT_EQ(result.source, Source::cache);
    EXPECT_EQ(result.body, "1");
    EXPECT_EQ(requestsTo("/a"), 1U);
    EXPECT_GT(cache->currentMemoryUsage(), 0U) << "What was read is kept in memory.";
}

TEST_F(ResponseCache, DoesNotStoreWhatMustNotBeStored) {
    serve("/a", {{"Cache-Control", "max-age=60, no-store"}});
    EXPECT_EQ(body("/a"), "1");
    EXPECT_EQ(body("/a"), "2");
    EXPECT_EQ(body(plain("/a", Policy::returnCacheDataElseLoad)), "3");
    EXPECT_EQ(cache->currentMemoryUsage(), 0U);
}

TEST_F(ResponseCache, ForgetsWhatANewerResponseThatMustNotBeStoredReplaces) {
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    serve("/a", {{"Cache-Control", "no-store"}});
    EXPECT_EQ(body(plain("/a", Policy::reloadIgnoringLocalCacheData)), "1");
    EXPECT_EQ(body("/a"), "2");
}

TEST_F(ResponseCache, ConfirmsAStaleResponseWithTheOrigin) {
    serveTagged("/a", "\"v1\"", {minute});
    EXPECT_EQ(body("/a"), "1");
    date->advance(61);
    const Loaded confirmed = load(plain("/a"));
    EXPECT_EQ(confirmed.source, Source::validatedCache);
    EXPECT_EQ(confirmed.status, 200);
    EXPECT_EQ(confirmed.body, "1");
    EXPECT_EQ(confirmed.field("age"), "0");
    EXPECT_EQ(load(plain("/a")).source, Source::cache) << "The confirmation made it fresh again.";
    restartProcess();
    EXPECT_EQ(load(plain("/a")).source, Source::cache) << "On disk as well.";
    EXPECT_EQ(requestsTo("/a"), 2U);
    EXPECT_EQ(backEnd->requests().at(1).header("if-none-match"), "\"v1\"");
}

TEST_F(ResponseCache, ConfirmsByDateOfChange) {
    const std::string changed = "Fri, 20 Nov 2026 12:00:00 GMT";
    backEnd->on("GET", "/a", [changed](const ReceivedRequest& request) {
        ScriptedResponse response =
            request.header("if-modified-since") == changed ? ScriptedResponse(304) : ScriptedResponse::text("body");
        return std::move(response).withHeader("Last-Modified", changed).withHeader("Cache-Control", "max-age=0");
    });
    EXPECT_EQ(body("/a"), "body");
    EXPECT_EQ(load(plain("/a")).source, Source::validatedCache);
}

TEST_F(ResponseCache, ReplacesAStaleResponseThatHasChanged) {
    serveTagged("/a", "\"v1\"", {minute});
    EXPECT_EQ(body("/a"), "1");
    date->advance(61);
    serveTagged("/a", "\"v2\"", {minute});
    EXPECT_EQ(load(plain("/a")).source, Source::network);
    EXPECT_EQ(load(plain("/a")).field("etag"), "\"v2\"");
}

TEST_F(ResponseCache, LoadsAgainWhereAConfirmationIsAboutAnotherResponse) {
    serveTagged("/a", "\"v1\"", {minute});
    EXPECT_EQ(body("/a"), "1");
    date->advance(61);
    backEnd->on("GET", "/a", [](const ReceivedRequest& request) {
        return request.header("if-none-match") ? ScriptedResponse(304).withHeader("ETag", "\"v2\"")
                                               : ScriptedResponse::text("whole").withHeader("ETag", "\"v2\"");
    });
    const Loaded result = load(plain("/a"));
    EXPECT_EQ(result.body, "whole");
    EXPECT_EQ(result.source, Source::network);
    EXPECT_EQ(requestsTo("/a"), 3U);
}

TEST_F(ResponseCache, ForgetsAResponseWhoseConfirmationForbidsToStoreIt) {
    serveTagged("/a", "\"v1\"", {minute});
    EXPECT_EQ(body("/a"), "1");
    date->advance(61);
    serveTagged("/a", "\"v1\"", {{"Cache-Control", "no-store"}});
    EXPECT_EQ(body("/a"), "1");
    EXPECT_EQ(failure(plain("/a", Policy::returnCacheDataDontLoad)), URLError::Kind::resourceUnavailable);
}

TEST_F(ResponseCache, LeavesConditionsOfTheCallerAlone) {
    serveTagged("/a", "\"v1\"", {minute});
    EXPECT_EQ(body("/a"), "1");
    const Loaded result = load(plain("/a", "If-None-Match", "\"v1\""));
    EXPECT_EQ(result.status, 304);
    EXPECT_EQ(result.body, "");
    EXPECT_EQ(result.source, Source::network);
    EXPECT_EQ(body(plain("/a", "If-None-Match", "\"other\"")), "3");
    EXPECT_EQ(body("/a"), "3") << "A whole answer to a caller's condition is as good as any.";
}

TEST_F(ResponseCache, AnswersEachAuthorizationWithItsOwnResponse) {
    backEnd->on("GET", "/me", [](const ReceivedRequest& request) {
        return ScriptedResponse::text("for " + request.header("authorization").value_or("nobody"))
            .withHeader("Cache-Control", "max-age=60");
    });
    const URLRequest first = plain("/me", "Authorization", "Bearer one");
    const URLRequest second = plain("/me", "Authorization", "Bearer two");
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(body(first), "for Bearer one");
        EXPECT_EQ(body(second), "for Bearer two");
        EXPECT_EQ(body("/me"), "for nobody");
    }
    EXPECT_EQ(requestsTo("/me"), 3U);
    restartProcess();
    EXPECT_EQ(body(second), "for Bearer two");
    EXPECT_EQ(requestsTo("/me"), 3U);
    EXPECT_EQ(failure([] {
                  URLRequest request = plain("/me", Policy::returnCacheDataDontLoad);
                  request.headers.set("Authorization", "Bearer three");
                  return request;
              }()),
              URLError::Kind::resourceUnavailable);
}

TEST_F(ResponseCache, WritesNoAuthorizationToDisk) {
    serve("/me", {minute, {"Vary", "X-Key"}});
    URLRequest request = requestFor("/me");
    request.headers.set("X-Key", secret);
    EXPECT_EQ(body(request), "1");
    endProcess();
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(backEnd->cacheDirectory())) {
        if (entry.is_regular_file()) {
            std::ifstream stream(entry.path(), std::ios::binary);
            const std::string content((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
            EXPECT_EQ(content.find(secret), std::string::npos) << entry.path();
            files += content.find("https://api.example/me") != std::string::npos ? 1 : 0;
        }
    }
    EXPECT_EQ(files, 1U) << "The response itself lies there.";
}

TEST_F(ResponseCache, KeepsItsFilesFromOtherUsers) {
    serve("/a", {minute});
    const auto folder = backEnd->cacheDirectory() / "new";
    cache = URLCache::make(mebibyte, 50 * mebibyte, folder, clock());
    useSession();
    EXPECT_EQ(body("/a"), "1");
    EXPECT_GT(diskUsage(), 0U);
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(folder).permissions(), perms::owner_all);
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        EXPECT_EQ(entry.status().permissions(), perms::owner_read | perms::owner_write) << entry.path();
    }
}

TEST_F(ResponseCache, TellsVariantsApart) {
    backEnd->on("GET", "/a", [](const ReceivedRequest& request) {
        return ScriptedResponse::text(request.header("accept-language").value_or("any"))
            .withHeader("Vary", "Accept-Language")
            .withHeader("Cache-Control", "max-age=60");
    });
    const URLRequest german = plain("/a", "Accept-Language", "de");
    const URLRequest english = plain("/a", "Accept-Language", "en");
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(body(german), "de");
        EXPECT_EQ(body(english), "en");
        EXPECT_EQ(body("/a"), "any");
        restartProcess();
    }
    EXPECT_EQ(requestsTo("/a"), 3U);
}

TEST_F(ResponseCache, StoresNothingThatVariesAlways) {
    serve("/a", {minute, {"Vary", "*"}});
    EXPECT_EQ(body("/a"), "1");
    EXPECT_EQ(body("/a"), "2");
}

TEST_F(ResponseCache, NeverStoresAnswersToPost) {
    backEnd->on("POST", "/token", [](const ReceivedRequest&) {
        return ScriptedResponse::json(R"({"access_token":"canary-4711"})").withHeader("Cache-Control", "max-age=60");
    });
    EXPECT_EQ(load(upload("/token", "grant_type=client_credentials")).status, 200);
    EXPECT_EQ(load(upload("/token", "grant_type=client_credentials")).status, 200);
    EXPECT_EQ(requestsTo("/token"), 2U);
    EXPECT_EQ(cache->currentMemoryUsage(), 0U);
    EXPECT_EQ(failure(plain("/token", Policy::returnCacheDataDontLoad)), URLError::Kind::resourceUnavailable);
}

TEST_F(ResponseCache, DropsWhatAnUnsafeMethodChanged) {
    serve("/a", {minute});
    serve("/b", {minute});
    serve("/c", {minute});
    serve("/elsewhere", {minute});
    for (const char* target : {"/a", "/b", "/c", "/elsewhere"}) {
        EXPECT_EQ(body(target), "1");
    }
    EXPECT_EQ(body("https://other.example/b"), "2");
    backEnd->on("PUT", "/a", [](const ReceivedRequest&) {
        return ScriptedResponse(201)
            .withHeader("Location", "/b")
            .withHeader("Content-Location", "https://other.example/b");
    });
    EXPECT_EQ(load(upload("/a", "new", "PUT")).status, 201);
    EXPECT_EQ(body("/a"), "2");
    EXPECT_EQ(body("/b"), "3");
    EXPECT_EQ(body("/c"), "1");
    EXPECT_EQ(body("https://other.example/b"), "2") << "Another origin has no say.";
    restartProcess();
    EXPECT_EQ(body("/a"), "2");
    EXPECT_EQ(body("/elsewhere"), "1");
}

TEST_F(ResponseCache, KeepsWhatAFailedUnsafeMethodDidNotChange) {
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    backEnd->on("DELETE", "/a", [](const ReceivedRequest&) { return ScriptedResponse::text("no", 403); });
    EXPECT_EQ(load(requestFor("/a", "DELETE")).status, 403);
    EXPECT_EQ(body("/a"), "1");
}

TEST_F(ResponseCache, DoesNotStoreWhatAnUnsafeMethodChangedMeanwhile) {
    serve("/a", {minute});
    backEnd->on("POST", "/a", [](const ReceivedRequest&) { return ScriptedResponse::text("changed"); });
    backEnd->inject(Fault::stall(FaultPoint::responseBody), FaultSelector::next());
    Loading loading = begin(plain("/a"));
    ASSERT_TRUE(waitForStall());
    EXPECT_EQ(load(upload("/a", "change")).status, 200);
    backEnd->releaseStalled();
    EXPECT_EQ(loading.value().body, "1");
    EXPECT_EQ(body("/a"), "2");
}

TEST_F(ResponseCache, UpdatesAStoredResponseWithTheAnswerToHead) {
    std::string tag = "\"v1\"";
    backEnd->on("GET", "/a", [&tag](const ReceivedRequest& request) {
        return ScriptedResponse::text("body")
            .withHeader("ETag", tag)
            .withHeader("X-Method", request.method)
            .withHeader("Cache-Control", request.method == "HEAD" ? "max-age=600" : "max-age=60");
    });
    EXPECT_EQ(body("/a"), "body");
    date->advance(61);
    URLRequest head = plain("/a");
    head.httpMethod = "HEAD";
    EXPECT_EQ(load(head).source, Source::network);
    EXPECT_EQ(backEnd->requests().back().header("if-none-match"), "\"v1\"");
    date->advance(599);
    const Loaded updated = load(plain("/a"));
    EXPECT_EQ(updated.source, Source::cache);
    EXPECT_EQ(updated.body, "body");
    EXPECT_EQ(updated.field("x-method"), "HEAD");
    tag = "\"v2\"";
    head.cachePolicy = Policy::reloadIgnoringLocalCacheData;
    EXPECT_EQ(load(head).field("etag"), "\"v2\"");
    EXPECT_EQ(load(plain("/a")).source, Source::network) << "HEAD showed that the stored response is out of date.";
}

TEST_F(ResponseCache, AnswersHeadFromAStoredResponse) {
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    URLRequest head = plain("/a");
    head.httpMethod = "HEAD";
    const Loaded result = load(head);
    EXPECT_EQ(result.source, Source::cache);
    EXPECT_EQ(result.body, "");
    EXPECT_EQ(result.field("content-length"), "1");
}

TEST_F(ResponseCache, NeverTakesAPartForTheWhole) {
    backEnd->on("GET", "/a", [](const ReceivedRequest& request) {
        ScriptedResponse response = request.header("range")
                                        ? ScriptedResponse::text("bo", 206).withHeader("Content-Range", "bytes 0-1/4")
                                        : ScriptedResponse::text("body");
        return std::move(response).withHeader("Cache-Control", "max-age=60");
    });
    const URLRequest part = plain("/a", "Range", "bytes=0-1");
    EXPECT_EQ(load(part).status, 206);
    EXPECT_EQ(body("/a"), "body");
    EXPECT_EQ(load(part).status, 206);
    EXPECT_EQ(load(plain("/a")).source, Source::cache);
    EXPECT_EQ(requestsTo("/a"), 3U);
}

TEST_F(ResponseCache, KeepsErrorsThatSayHowLong) {
    serve("/gone", {minute}, 410);
    EXPECT_EQ(load(plain("/gone")).status, 410);
    EXPECT_EQ(load(plain("/gone")).source, Source::cache);
    serve("/no", {minute}, 401);
    EXPECT_EQ(load(plain("/no")).status, 401);
    EXPECT_EQ(load(plain("/no")).source, Source::network);
}

TEST_F(ResponseCache, FollowsAStoredRedirectWithoutAsking) {
    backEnd->on("GET", "/old", [](const ReceivedRequest&) {
        return ScriptedResponse::redirect("/new", 301).withHeader("Cache-Control", "max-age=60");
    });
    serve("/new", {{"Cache-Control", "max-age=10"}});
    EXPECT_EQ(body("/old"), "1");
    const Loaded both = load(plain("/old#f"));
    EXPECT_EQ(both.source, Source::cache);
    EXPECT_EQ(both.url, "https://api.example/new#f");
    date->advance(30);
    EXPECT_EQ(body("/old"), "2");
    EXPECT_EQ(requestsTo("/old"), 1U);
    EXPECT_EQ(requestsTo("/new"), 2U);
}

TEST_F(ResponseCache, EndsAfterTwentyRedirects) {
    backEnd->on("GET", "/loop", [](const ReceivedRequest&) {
        return ScriptedResponse::redirect("/loop", 301).withHeader("Cache-Control", "max-age=60");
    });
    EXPECT_EQ(failure(plain("/loop")), URLError::Kind::tooManyRedirects);
    EXPECT_EQ(requestsTo("/loop"), 1U);
}

TEST_F(ResponseCache, StripsCredentialsOnTheWayToAnotherOrigin) {
    backEnd->on("GET", "/out",
                [](const ReceivedRequest&) { return ScriptedResponse::redirect("https://other.example/in"); });
    serve("/in", {minute});
    EXPECT_EQ(load(requestFor("/out")).body, "1");
    EXPECT_EQ(backEnd->requests().at(1).header("authorization"), std::nullopt);
    EXPECT_EQ(load(plain("https://other.example/in")).source, Source::cache);
}

TEST_F(ResponseCache, StoresDecodedBodies) {
    backEnd->on("GET", "/a", [](const ReceivedRequest&) {
        return ScriptedResponse::text(std::string(10000, 'x'))
            .withCoding(ContentCoding::gzip)
            .withHeader("Cache-Control", "max-age=60");
    });
    EXPECT_EQ(body("/a"), std::string(10000, 'x'));
    restartProcess();
    const Loaded result = load(plain("/a"));
    EXPECT_EQ(result.source, Source::cache);
    EXPECT_EQ(result.body, std::string(10000, 'x'));
    EXPECT_EQ(result.field("content-encoding"), "gzip");
}

TEST_F(ResponseCache, AnswersGatewayTimeoutWhereOnlyTheCacheMayAnswer) {
    serve("/a", {minute});
    const URLRequest request = plain("/a", "Cache-Control", "only-if-cached");
    const Loaded missing = load(request);
    EXPECT_EQ(missing.status, 504);
    EXPECT_EQ(missing.source, Source::cache);
    EXPECT_EQ(requestsTo("/a"), 0U);
    EXPECT_EQ(body("/a"), "1");
    EXPECT_EQ(body(request), "1");
}

TEST_F(ResponseCache, RespectsTheLimitOfTheSessionThatAsks) {
    serve("/a", {minute});
    backEnd->on("GET", "/large", [](const ReceivedRequest&) {
        return ScriptedResponse::generated(5000).withHeader("Cache-Control", "max-age=60");
    });
    EXPECT_EQ(load(plain("/large")).body.size(), 5000U);
    URLSessionConfiguration limited = configuration();
    limited.urlCache = cache;
    limited.maximumBodySize = 4999;
    restart(limited);
    EXPECT_EQ(failure(plain("/large")), URLError::Kind::dataLengthExceedsMaximum);
}

TEST_F(ResponseCache, ForgetsEverythingOnRequest) {
    serve("/a", {minute});
    serve("/b", {minute});
    EXPECT_EQ(body("/a"), "1");
    backEnd->inject(Fault::stall(FaultPoint::responseBody), FaultSelector::next());
    Loading loading = begin(plain("/b"));
    ASSERT_TRUE(waitForStall());
    cache->removeAllCachedResponses();
    EXPECT_EQ(cache->currentMemoryUsage(), 0U);
    backEnd->releaseStalled();
    EXPECT_EQ(loading.value().body, "1");
    EXPECT_EQ(body("/a"), "2");
    EXPECT_EQ(body("/b"), "2");
    restartProcess();
    EXPECT_EQ(body("/a"), "2");
}

// The six policies.

TEST_F(ResponseCache, ReloadsPastItself) {
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    EXPECT_EQ(body(plain("/a", Policy::reloadIgnoringLocalCacheData)), "2");
    EXPECT_EQ(backEnd->requests().back().header("cache-control"), std::nullopt);
    EXPECT_EQ(body("/a"), "2") << "What was loaded is stored.";
}

TEST_F(ResponseCache, ReloadsPastEveryCacheOnTheWay) {
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    EXPECT_EQ(body(plain("/a", Policy::reloadIgnoringLocalAndRemoteCacheData)), "2");
    EXPECT_EQ(backEnd->requests().back().header("cache-control"), "no-cache");
    EXPECT_EQ(backEnd->requests().back().header("pragma"), "no-cache");
    EXPECT_EQ(body("/a"), "2");
}

TEST_F(ResponseCache, ReturnsAStoredResponseOfAnyAgeElseLoads) {
    serve("/a", {{"Cache-Control", "max-age=1, must-revalidate"}});
    const URLRequest request = plain("/a", Policy::returnCacheDataElseLoad);
    EXPECT_EQ(body(request), "1");
    date->advance(1e6);
    EXPECT_EQ(body(request), "1");
    restartProcess();
    EXPECT_EQ(body(request), "1");
}

TEST_F(ResponseCache, FailsWithAnErrorOfItsOwnWhereNothingIsStoredAndLoadingIsForbidden) {
    serve("/a", {minute});
    const URLRequest request = plain("/a", Policy::returnCacheDataDontLoad);
    EXPECT_EQ(failure(request), URLError::Kind::resourceUnavailable);
    EXPECT_EQ(requestsTo("/a"), 0U);
    EXPECT_EQ(body("/a"), "1");
    date->advance(1e6);
    EXPECT_EQ(body(request), "1");
    EXPECT_EQ(failure([] {
                  URLRequest post = upload("/a", "x");
                  post.cachePolicy = Policy::returnCacheDataDontLoad;
                  return post;
              }()),
              URLError::Kind::resourceUnavailable);
    EXPECT_EQ(backEnd->requests().size(), 1U);
}

TEST_F(ResponseCache, RevalidatesEveryTimeWhereAsked) {
    serveTagged("/a", "\"v1\"", {{"Cache-Control", "max-age=60, immutable"}});
    EXPECT_EQ(body("/a"), "1");
    const URLRequest request = plain("/a", Policy::reloadRevalidatingCacheData);
    EXPECT_EQ(load(request).source, Source::validatedCache);
    EXPECT_EQ(load(request).source, Source::validatedCache);
    EXPECT_EQ(load(plain("/a")).source, Source::cache);
    EXPECT_EQ(requestsTo("/a"), 3U);
}

TEST_F(ResponseCache, KeepsNothingWithoutCapacityAndStillObeysThePolicies) {
    useCache(0, 0);
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    EXPECT_EQ(body("/a"), "2");
    EXPECT_EQ(failure(plain("/a", Policy::returnCacheDataDontLoad)), URLError::Kind::resourceUnavailable);
}

TEST_F(ResponseCache, LeavesNothingOfAnAbortedTransfer) {
    const auto serveLarge = [this](std::uint64_t size) {
        backEnd->on("GET", "/large", [size](const ReceivedRequest&) {
            return ScriptedResponse::generated(size).withHeader("Cache-Control", "max-age=60");
        });
    };
    constexpr std::uint64_t size = 600000;
    serveLarge(size);
    EXPECT_EQ(body("/warm-up").empty(), false);
    const std::uint64_t before = diskUsage();
    for (const Fault& fault : {Fault::reset(FaultPoint::responseBody), Fault::truncation(FaultPoint::responseBody),
                               Fault::close(FaultPoint::responseBody)}) {
        backEnd->inject(fault, FaultSelector::next());
        const Loaded result = load(plain("/large"));
        EXPECT_TRUE(result.error || result.body.size() == size);
        if (result.error) {
            EXPECT_EQ(failure(plain("/large", Policy::returnCacheDataDontLoad)), URLError::Kind::resourceUnavailable);
        }
    }
    backEnd->inject(Fault::stall(FaultPoint::responseBody), FaultSelector::next());
    Loading loading = begin(plain("/large", Policy::reloadIgnoringLocalCacheData));
    ASSERT_TRUE(waitForStall());
    loading.cancel();
    EXPECT_EQ(loading.value().error, URLError::cancelled());
    EXPECT_EQ(failure(plain("/large", Policy::returnCacheDataDontLoad)), URLError::Kind::resourceUnavailable);
    EXPECT_TRUE(becomesTrue([&] { return diskUsage() <= before + 65536; })) << "A part of the body stays.";
}

TEST_F(ResponseCache, StreamsBodiesToDiskWhileTheyAreRead) {
    constexpr std::uint64_t size = 2000000;
    backEnd->on("GET", "/large", [](const ReceivedRequest&) {
        return ScriptedResponse::generated(size).withHeader("Cache-Control", "max-age=60");
    });
    const std::uint64_t before = diskUsage();
    backEnd->inject(Fault::stall(FaultPoint::responseBody).after(size / 2), FaultSelector::next());
    Loading loading = begin(plain("/large"));
    ASSERT_TRUE(waitForStall());
    EXPECT_TRUE(becomesTrue([&] { return diskUsage() >= before + size / 4; }))
        << "No part lies there before the rest has come.";
    backEnd->releaseStalled();
    const std::string whole = loading.value().body;
    restartProcess();
    const Loaded stored = load(plain("/large"));
    EXPECT_EQ(stored.source, Source::cache);
    EXPECT_TRUE(stored.body == whole);
}

TEST_F(ResponseCache, KeepsABodyOfATwentiethOfTheDiskAtMost) {
    useCache(0, 10 * mebibyte);
    backEnd->on("GET", "/{size}", [](const ReceivedRequest& request) {
        return ScriptedResponse::generated(std::stoull(request.parameters.at("size")))
            .withHeader("Cache-Control", "max-age=60");
    });
    for (const auto& [target, source] : {std::pair("/500000", Source::cache), std::pair("/540000", Source::network)}) {
        EXPECT_FALSE(load(plain(target)).error);
        EXPECT_EQ(load(plain(target)).source, source) << target;
    }
}

TEST_F(ResponseCache, StaysWithinItsCapacities) {
    useCache(200000, mebibyte);
    backEnd->on("GET", "/{name}", [](const ReceivedRequest&) {
        return ScriptedResponse::generated(40000).withHeader("Cache-Control", "max-age=60");
    });
    for (int i = 0; i < 60; ++i) {
        EXPECT_FALSE(load(plain("/" + std::to_string(i))).error);
        date->advance(0.01);
    }
    EXPECT_LE(cache->currentMemoryUsage(), 200000U);
    EXPECT_LE(diskUsage(), mebibyte);
    EXPECT_EQ(load(plain("/59")).source, Source::cache);
    EXPECT_EQ(load(plain("/50", Policy::returnCacheDataDontLoad)).source, Source::cache) << "From disk.";
    EXPECT_TRUE(load(plain("/0", Policy::returnCacheDataDontLoad)).error);
}

TEST_F(ResponseCache, HasOneStoreForADirectoryWithTheSizesOfTheNewest) {
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    const auto again = URLCache::make(mebibyte, 20 * mebibyte, backEnd->cacheDirectory() / "." / "", clock());
    EXPECT_EQ(cache->memoryCapacity(), mebibyte);
    EXPECT_EQ(cache->diskCapacity(), 20 * mebibyte);
    EXPECT_GT(again->currentMemoryUsage(), 0U);
    const auto elsewhere = URLCache::make(0, 0, backEnd->cacheDirectory() / "elsewhere", clock());
    EXPECT_EQ(elsewhere->diskCapacity(), 0U);
    EXPECT_EQ(cache->memoryCapacity(), mebibyte);
}

TEST_F(ResponseCache, WorksInMemoryWhereTheDiskIsOutOfOrder) {
    const auto file = backEnd->cacheDirectory() / "file";
    std::ofstream(file) << "in the way";
    cache = URLCache::make(mebibyte, 50 * mebibyte, file, clock());
    useSession();
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    EXPECT_EQ(load(plain("/a")).source, Source::cache);
    restartProcess();
    EXPECT_EQ(body("/a"), "2");
}

TEST_F(ResponseCache, LoadsAnewWhatWasDamagedOnDisk) {
    serve("/a", {minute});
    EXPECT_EQ(body("/a"), "1");
    endProcess();
    for (const auto& entry : std::filesystem::directory_iterator(backEnd->cacheDirectory())) {
        if (entry.is_regular_file()) {
            std::ofstream(entry.path(), std::ios::binary) << std::string(9000, '\x5a');
        }
    }
    useCache(0, 50 * mebibyte);
    EXPECT_EQ(body("/a"), "2");
    EXPECT_EQ(load(plain("/a")).source, Source::cache) << "The store was made anew.";
}

// Failures of the origin and of the network.

class ResponseCacheOffline : public CacheFixture {
protected:
    /// From here on nobody listens where the session connects to.
    void disconnect() {
        URLSessionConfiguration changed = configuration();
        changed.urlCache = cache;
        constexpr std::uint16_t unused = 1;
        changed.connectionOverrides = {URLConnectionOverride("api.example", std::nullopt, "127.0.0.1", unused)};
        restart(changed);
    }
};

TEST_F(ResponseCacheOffline, HidesAnErrorWhereTheResponseAllowsIt) {
    serve("/a", {{"Cache-Control", "max-age=60, stale-if-error=600"}});
    EXPECT_EQ(body("/a"), "1");
    date->advance(100);
    serve("/a", {}, 503);
    const Loaded hidden = load(plain("/a"));
    EXPECT_EQ(hidden.status, 200);
    EXPECT_EQ(hidden.source, Source::cache);
    EXPECT_EQ(hidden.field("age"), "100");
    serve("/a", {}, 404);
    EXPECT_EQ(load(plain("/a")).status, 404) << "That is an answer, not an error.";
}

TEST_F(ResponseCacheOffline, ShowsTheErrorOnceTheTimeIsOver) {
    serve("/a", {{"Cache-Control", "max-age=60, stale-if-error=600"}});
    EXPECT_EQ(body("/a"), "1");
    date->advance(661);
    serve("/a", {}, 503);
    EXPECT_EQ(load(plain("/a")).status, 503);
}

TEST_F(ResponseCacheOffline, AnswersWhileTheOriginCannotBeReached) {
    serve("/a", {{"Cache-Control", "max-age=60, stale-if-error=600"}});
    serve("/b", {minute});
    EXPECT_EQ(body("/a"), "1");
    EXPECT_EQ(body("/b"), "1");
    date->advance(100);
    disconnect();
    EXPECT_EQ(load(plain("/a")).source, Source::cache);
    EXPECT_TRUE(load(plain("/b")).error);
    EXPECT_EQ(body(plain("/b", "Cache-Control", "stale-if-error=600")), "1");
    EXPECT_EQ(body(plain("/b", "Cache-Control", "max-stale=600")), "1");
    EXPECT_EQ(body(plain("/b", Policy::returnCacheDataElseLoad)), "1");
}

TEST_F(ResponseCacheOffline, ShowsACancellation) {
    serve("/a", {{"Cache-Control", "max-age=0, stale-if-error=600"}});
    EXPECT_EQ(body("/a"), "1");
    backEnd->inject(Fault::stall(FaultPoint::responseStart));
    Loading loading = begin(plain("/a"));
    ASSERT_TRUE(waitForStall());
    loading.cancel();
    EXPECT_EQ(loading.value().error, URLError::cancelled());
}

} // namespace
} // namespace tovrel::testing
