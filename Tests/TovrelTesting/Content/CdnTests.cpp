#include <TovrelTesting/Content/ContentFixture.hpp>

namespace tovrel::testing {

using ::testing::HasSubstr;
using ::testing::Not;

class ContentServerCdn : public ContentFixture {
protected:
    void SetUp() override {
        ContentFixture::SetUp();
        ContentFile file(std::string("content"), "text/plain");
        file.entityTag = R"("v1,2")";
        file.lastModified = Date::fromSecondsSince1970(1'600'000'000.75);
        file.cacheControl = "private, max-age=60";
        content->setFile("/file", file);
    }

    long statusWith(std::vector<std::string> headers) { return cdn("/file", std::move(headers)).status; }
};

TEST_F(ContentServerCdn, ServesAFileWithWhatCachesNeed) {
    const CurlResult result = cdn("/file");
    EXPECT_EQ(result.status, 200);
    EXPECT_EQ(result.body, "content");
    EXPECT_THAT(result.head, HasSubstr("Content-Type: text/plain\r\n"));
    EXPECT_THAT(result.head, HasSubstr("ETag: \"v1,2\"\r\n"));
    EXPECT_THAT(result.head, HasSubstr("Last-Modified: Sun, 13 Sep 2020 12:26:40 GMT\r\n"));
    EXPECT_THAT(result.head, HasSubstr("Cache-Control: private, max-age=60\r\n"));
    EXPECT_THAT(result.head, HasSubstr("Date: Tue, 14 Nov 2023 22:13:20 GMT\r\n"));
}

TEST_F(ContentServerCdn, SparesAClientWhatItHasByItsTag) {
    const CurlResult result = cdn("/file", {R"(If-None-Match: "v1,2")"});
    EXPECT_EQ(result.status, 304);
    EXPECT_TRUE(result.body.empty());
    EXPECT_THAT(result.head, HasSubstr("ETag: \"v1,2\"\r\n"));
    EXPECT_THAT(result.head, HasSubstr("Cache-Control: private, max-age=60\r\n"));
    EXPECT_THAT(result.head, HasSubstr("Date: "));
    EXPECT_THAT(result.head, Not(HasSubstr("Content-Type")));
    EXPECT_EQ(content->counts().notModified, 1U);
}

TEST_F(ContentServerCdn, ComparesTagsWeaklyAndWhole) {
    for (const char* tags : {R"(W/"v1,2")", R"("a", "v1,2")", R"("a","b" , W/"v1,2","c")", "*"}) {
        EXPECT_EQ(statusWith({std::string("If-None-Match: ") + tags}), 304) << tags;
    }
    for (const char* tags : {R"("v1")", R"("V1,2")", "v1,2", R"("v1,2)", R"("","v1")", R"("")", "\""}) {
        EXPECT_EQ(statusWith({std::string("If-None-Match: ") + tags}), 200) << tags;
    }
    EXPECT_EQ(statusWith({R"(If-None-Match: "a")", R"(If-None-Match: "v1,2")"}), 304);
}

TEST_F(ContentServerCdn, SparesAClientWhatItHasByItsDate) {
    EXPECT_EQ(statusWith({"If-Modified-Since: Sun, 13 Sep 2020 12:26:40 GMT"}), 304);
    EXPECT_EQ(statusWith({"If-Modified-Since: Sun, 13 Sep 2020 12:26:41 GMT"}), 304);
    EXPECT_EQ(statusWith({"If-Modified-Since: Sun, 13 Sep 2020 12:26:39 GMT"}), 200);
    for (const char* date : {"2020-09-13T12:26:41Z", "Sun, 13 Sep 2020 12:26:41 GMT!", "yesterday"}) {
        EXPECT_EQ(statusWith({std::string("If-Modified-Since: ") + date}), 200) << date;
    }
}

TEST_F(ContentServerCdn, PrefersTagsToDates) {
    const std::string date = "If-Modified-Since: Sun, 13 Sep 2020 12:26:41 GMT";
    EXPECT_EQ(statusWith({date, R"(If-None-Match: "other")"}), 200);
    EXPECT_EQ(statusWith({"If-Modified-Since: Sun, 13 Sep 1999 12:26:41 GMT", R"(If-None-Match: "v1,2")"}), 304);
}

TEST_F(ContentServerCdn, TellsANewVersionByItsTag) {
    content->setFile("/other", ContentFile(std::string("one")));
    const std::string head = cdn("/other").head;
    const std::size_t start = head.find("ETag: ") + 6;
    const std::string condition = "If-None-Match: " + head.substr(start, head.find('\r', start) - start);
    EXPECT_EQ(cdn("/other", {condition}).status, 304);
    content->setFile("/other", ContentFile(std::string("two")));
    EXPECT_EQ(cdn("/other", {condition}).body, "two");
}

TEST_F(ContentServerCdn, SendsNoMoreThanAFileHas) {
    ContentFile file(std::string("bare"));
    file.entityTag.reset();
    file.cacheControl.reset();
    content->setFile("/bare", file);
    const CurlResult result = cdn("/bare", {R"(If-None-Match: "")"});
    EXPECT_EQ(result.body, "bare");
    for (const char* name : {"ETag", "Last-Modified", "Cache-Control"}) {
        EXPECT_THAT(result.head, Not(HasSubstr(name)));
    }
}

TEST_F(ContentServerCdn, StreamsAFileOfTwentyMegabytes) {
    constexpr std::size_t size = 20'000'000;
    content->setFile("/large", ContentFile(GeneratedBytes(size)));
    const CurlResult result = cdn("/large");
    EXPECT_THAT(result.head, HasSubstr("Content-Length: 20000000\r\n"));
    EXPECT_TRUE(result.body == generatedBytes(0, size));
    EXPECT_GT(result.arrivals.size(), 100U);
    EXPECT_EQ(cdn("/large", {R"(If-None-Match: "generated-20000000")"}).status, 304);
}

TEST_F(ContentServerCdn, AnswersHeadRequestsWithoutTheBody) {
    CurlRequest request = contentRequest(cdnHost, "/file");
    request.method = "HEAD";
    const CurlResult result = client->perform(request);
    EXPECT_EQ(result.status, 200);
    EXPECT_THAT(result.head, HasSubstr("Content-Length: 7\r\n"));
    EXPECT_TRUE(result.body.empty());
}

TEST_F(ContentServerCdn, ServesEnvelopesToo) {
    content->setFile("/config", ContentFile::enveloped(R"({"a":1})"));
    const CurlResult result = cdn("/config");
    EXPECT_EQ(result.body, R"({"meta":{"code":"ok","message":"OK"},"data":{"a":1}})");
    EXPECT_THAT(result.head, HasSubstr("Content-Type: application/json\r\n"));
    EXPECT_THAT(result.head, HasSubstr("Cache-Control: private, no-cache\r\n"));
}

TEST_F(ContentServerCdn, AnswersThroughHandlers) {
    content->onCdn("PUT", "/{path...}", [](const ReceivedRequest& request, const AccountsServerSession&) {
        return ScriptedResponse::text(request.parameters.at("path"), 201);
    });
    CurlRequest request = contentRequest(cdnHost, "/a/b");
    request.method = "PUT";
    EXPECT_EQ(client->perform(request).body, "a/b");
}

TEST_F(ContentServerCdn, WantsAnAccessTokenForFilesToo) {
    accounts->endSessions();
    const CurlResult result = cdn("/file", {R"(If-None-Match: "v1,2")"});
    EXPECT_EQ(result.status, 401);
    EXPECT_EQ(content->counts().unauthorized, 1U);
}

TEST_F(ContentServerCdn, LivesOnWithItsBackEnd) {
    content.reset();
    accounts.reset();
    EXPECT_EQ(cdn("/file").body, "content");
}

} // namespace tovrel::testing
