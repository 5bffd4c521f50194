#include <TovrelTesting/Content/ContentFixture.hpp>

namespace tovrel::testing {

using ::testing::HasSubstr;

namespace {

struct ReadPagination {
    std::int64_t limit = 0;
    std::optional<std::string> next;

    static constexpr auto fields() {
        return std::tuple{Field<&ReadPagination::limit, "limit">{}, Field<&ReadPagination::next, "next">{}};
    }
};

struct ReadMeta {
    std::string code;
    std::string message;
    std::optional<ReadPagination> pagination;

    static constexpr auto fields() {
        return std::tuple{Field<&ReadMeta::code, "code">{}, Field<&ReadMeta::message, "message">{},
                          Field<&ReadMeta::pagination, "pagination">{}};
    }
};

struct ReadPage {
    ReadMeta meta;
    std::optional<std::vector<std::int64_t>> data;

    static constexpr auto fields() {
        return std::tuple{Field<&ReadPage::meta, "meta">{}, Field<&ReadPage::data, "data">{}};
    }
};

std::vector<std::string> numbersUpTo(int last) {
    std::vector<std::string> numbers;
    for (int number = 1; number <= last; ++number) {
        numbers.push_back(std::to_string(number));
    }
    return numbers;
}

} // namespace

class ContentServerApi : public ContentFixture {
protected:
    ReadPage page(const std::string& target) {
        const CurlResult result = api(target);
        EXPECT_EQ(result.status, 200) << result.body;
        return JSONDecoder().decode<ReadPage>(Data(result.body));
    }

    std::string refusal(const std::string& target) {
        const CurlResult result = api(target);
        return fmt::format("{} {}", result.status, JSONDecoder().decode<ReadPage>(Data(result.body)).meta.code);
    }
};

TEST_F(ContentServerApi, AnswersThroughHandlersThatKnowWhoAsks) {
    content->onApi("POST", "/items/{id}", [](const ReceivedRequest& request, const AccountsServerSession& session) {
        return envelope(fmt::format(R"({{"id":"{}","by":"{}","sent":{}}})", request.parameters.at("id"),
                                    session.clientIdentifier, request.body));
    });
    CurlRequest request = contentRequest(apiHost, "/items/a%20b");
    request.method = "POST";
    request.body = "[1]";
    EXPECT_EQ(client->perform(request).body,
              R"({"meta":{"code":"ok","message":"OK"},"data":{"id":"a b","by":"reader","sent":[1]}})");
}

TEST_F(ContentServerApi, RefusesInAnEnvelope) {
    content->onApi("GET", "/broken", [](const ReceivedRequest&, const AccountsServerSession&) {
        return refusalEnvelope(503, "maintenance", "Back \"soon\"");
    });
    const CurlResult result = api("/broken");
    EXPECT_EQ(result.status, 503);
    EXPECT_EQ(result.body, R"({"meta":{"code":"maintenance","message":"Back \"soon\""}})");
    EXPECT_EQ(refusal("/nowhere"), "404 not_found");
}

TEST_F(ContentServerApi, CanAnswerWithoutData) {
    content->onApi("DELETE", "/items/{id}",
                   [](const ReceivedRequest&, const AccountsServerSession&) { return envelope(std::nullopt); });
    CurlRequest request = contentRequest(apiHost, "/items/1");
    request.method = "DELETE";
    EXPECT_EQ(client->perform(request).body, R"({"meta":{"code":"ok","message":"OK"}})");
}

TEST_F(ContentServerApi, WantsAnAccessTokenThatIsGood) {
    content->setCollection("/items", numbersUpTo(1));
    CurlRequest anonymous("https://api.example/items");
    EXPECT_EQ(client->perform(anonymous).status, 401);
    EXPECT_THAT(client->perform(anonymous).head, HasSubstr("WWW-Authenticate: Bearer realm=\"api\"\r\n"));
    EXPECT_EQ(api("/items").status, 200);
    accounts->expireAccessTokens();
    EXPECT_EQ(refusal("/items"), "401 unauthorized");
    EXPECT_EQ(refusal("/nowhere"), "401 unauthorized");
    EXPECT_THAT(api("/items").head, HasSubstr("error=\"invalid_token\""));
    EXPECT_EQ(content->counts().requests, 6U);
    EXPECT_EQ(content->counts().unauthorized, 5U);
}

TEST_F(ContentServerApi, WantsItsScopesInTheToken) {
    useContentWith({"content", "roles"});
    content->setCollection("/items", numbersUpTo(1));
    EXPECT_EQ(refusal("/items"), "403 insufficient_scope");
    EXPECT_THAT(api("/items").head, HasSubstr("error=\"insufficient_scope\", scope=\"content roles\""));
    accessToken = tokenFor(tokenRequest("grant_type=client_credentials&scope=content")).accessToken;
    EXPECT_EQ(refusal("/items"), "403 insufficient_scope");
    accessToken = tokenFor(tokenRequest("grant_type=client_credentials&scope=content%20roles")).accessToken;
    EXPECT_EQ(api("/items").status, 200);
}

TEST_F(ContentServerApi, HandsOutACollectionPageByPage) {
    content->setCollection("/items", numbersUpTo(45));
    std::vector<std::int64_t> read;
    std::string target = "/items";
    int pages = 0;
    for (bool isMore = true; isMore; ++pages) {
        const ReadPage part = page(target);
        read.insert(read.end(), part.data->begin(), part.data->end());
        EXPECT_EQ(part.meta.pagination->limit, 20);
        isMore = part.meta.pagination->next.has_value();
        target = "/items?next=" + part.meta.pagination->next.value_or("");
    }
    EXPECT_EQ(pages, 3);
    ASSERT_EQ(read.size(), 45U);
    EXPECT_EQ(read.back(), 45);
    EXPECT_TRUE(std::ranges::is_sorted(read));
}

TEST_F(ContentServerApi, EndsAtAFullLastPage) {
    content->setCollection("/items", numbersUpTo(4));
    const ReadPage first = page("/items?limit=2");
    EXPECT_EQ(first.data, (std::vector<std::int64_t>{1, 2}));
    const ReadPage second = page("/items?limit=2&next=" + first.meta.pagination->next.value());
    EXPECT_EQ(second.data, (std::vector<std::int64_t>{3, 4}));
    EXPECT_FALSE(second.meta.pagination->next);
}

TEST_F(ContentServerApi, HandsOutAnEmptyCollection) {
    content->setCollection("/items", {});
    EXPECT_EQ(api("/items?limit=100").body,
              R"({"meta":{"code":"ok","message":"OK","pagination":{"limit":100}},"data":[]})");
}

TEST_F(ContentServerApi, RefusesPagesThatDoNotExist) {
    content->setCollection("/items", numbersUpTo(3));
    for (const char* limit : {"0", "-1", "101", "x", "1x", "99999999999999999999", "%zz"}) {
        const std::string expected = std::string(limit) == "%zz" ? "400 invalid_query" : "400 invalid_limit";
        EXPECT_EQ(refusal(std::string("/items?limit=") + limit), expected) << limit;
    }
    // The last three stand for 4, -1 and 1x.
    for (const char* cursor : {"1", "!", "NA", "LTE", "MXg"}) {
        EXPECT_EQ(refusal(std::string("/items?next=") + cursor), "400 invalid_next") << cursor;
    }
}

TEST_F(ContentServerApi, ReplacesACollection) {
    content->setCollection("/items", numbersUpTo(3));
    content->setCollection("/items", numbersUpTo(1));
    EXPECT_EQ(page("/items").data, std::vector<std::int64_t>{1});
}

TEST_F(ContentServerApi, IsNotTheContentDeliveryNetwork) {
    content->setCollection("/items", numbersUpTo(3));
    content->setFile("/file", ContentFile(std::string("text")));
    EXPECT_EQ(cdn("/items").status, 404);
    EXPECT_EQ(api("/file").status, 404);
}

} // namespace tovrel::testing
