#include <TovrelTesting/BackEnd/BackEndFixture.hpp>

namespace tovrel::testing {

class LocalBackEndRouting : public BackEndFixture {
protected:
    void SetUp() override {
        LocalBackEndOptions options;
        options.hostNames = {"api.example", "cdn.example"};
        startWith(options);
    }

    std::string bodyAt(const std::string& url, const std::string& method = "GET") {
        CurlRequest request(url);
        request.method = method;
        return client->perform(request).body;
    }

    static RouteHandler saying(const std::string& text) {
        return [text](const ReceivedRequest&) { return ScriptedResponse::text(text); };
    }
};

TEST_F(LocalBackEndRouting, AnswersWithNotFoundWhereThereIsNoRoute) {
    const CurlResult result = get("/nowhere");
    EXPECT_EQ(result.status, 404);
    EXPECT_EQ(result.body, R"({"error":"There is no such route."})");
    EXPECT_THAT(result.head, ::testing::HasSubstr("Content-Type: application/json\r\n"));
}

TEST_F(LocalBackEndRouting, ToldApartByTheMethod) {
    backEnd->on("PUT", "/item", saying("put"));
    backEnd->on("DELETE", "/item", saying("deleted"));
    EXPECT_EQ(bodyAt(backEnd->url("/item"), "PUT"), "put");
    EXPECT_EQ(bodyAt(backEnd->url("/item"), "DELETE"), "deleted");
    EXPECT_EQ(get("/item").status, 404);
}

TEST_F(LocalBackEndRouting, AnswersAnyMethodWithAStar) {
    backEnd->on("*", "/item", saying("any"));
    EXPECT_EQ(bodyAt(backEnd->url("/item"), "PATCH"), "any");
    EXPECT_EQ(bodyAt(backEnd->url("/item")), "any");
}

TEST_F(LocalBackEndRouting, ToldApartByTheHost) {
    backEnd->onHost("api.example", "GET", "/name", saying("api"));
    backEnd->onHost("CDN.example", "GET", "/name", saying("cdn"));
    EXPECT_EQ(bodyAt("https://api.example/name"), "api");
    EXPECT_EQ(bodyAt("https://cdn.example/name"), "cdn");
    EXPECT_EQ(get("/name").status, 404);
}

TEST_F(LocalBackEndRouting, GivesTheHandlerTheNamedParts) {
    backEnd->on("GET", "/realms/{realm}/files/{path...}", [](const ReceivedRequest& request) {
        return ScriptedResponse::text(request.parameters.at("realm") + "|" + request.parameters.at("path"));
    });
    EXPECT_EQ(get("/realms/north%20pole/files/a/b.txt?q=1").body, "north pole|a/b.txt");
}

TEST_F(LocalBackEndRouting, TakesAPatternForTheWholePath) {
    backEnd->on("GET", "/realms/{realm}/members", saying("members"));
    EXPECT_EQ(get("/realms/north/members").status, 200);
    EXPECT_EQ(get("/realms//members").status, 404);
    EXPECT_EQ(get("/realms/north/south/members").status, 404);
    EXPECT_EQ(get("/realms/north/members/one").status, 404);
    EXPECT_EQ(get("/realms/north").status, 404);
}

TEST_F(LocalBackEndRouting, TakesTheRestOfAPathEvenIfItIsEmpty) {
    backEnd->on("GET", "/files/{path...}", [](const ReceivedRequest& request) {
        return ScriptedResponse::text("[" + request.parameters.at("path") + "]");
    });
    EXPECT_EQ(get("/files/").body, "[]");
    EXPECT_EQ(get("/files/a%2fb%zz/c").body, "[a/b%zz/c]");
}

TEST_F(LocalBackEndRouting, PrefersTheRouteThatWasAddedLast) {
    backEnd->on("GET", "/hello", saying("another"));
    EXPECT_EQ(get("/hello").body, "another");
}

TEST_F(LocalBackEndRouting, LetsAHandlerAddRoutes) {
    backEnd->on("GET", "/grow", [this](const ReceivedRequest&) {
        backEnd->on("GET", "/grown", saying("grown"));
        return ScriptedResponse(204);
    });
    EXPECT_EQ(get("/grow").status, 204);
    EXPECT_EQ(get("/grown").body, "grown");
}

} // namespace tovrel::testing
