#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelWebServices/Services/AnyApiWebResponseObject.hpp>
#include <TovrelWebServices/Services/ApiEmptyDataResponse.hpp>
#include <TovrelWebServices/Services/ApiWebResponseObject.hpp>
#include <TovrelWebServices/Services/Records.hpp>

#include <gtest/gtest.h>

#include <vector>

namespace tovrel::tests {

namespace {

const JSONDecoder decoder(KeyDecodingStrategy::convertFromSnakeCase(), DateDecodingStrategy::millisecondsSince1970());

template <class T>
ApiWebResponseObject<T> decode(std::string_view json) {
    return decoder.decode<ApiWebResponseObject<T>>(Data(json));
}

template <class T>
std::string again(std::string_view json) {
    return std::string(JSONEncoder().encode(decode<T>(json)).view());
}

} // namespace

TEST(Envelope, HoldsMetaPaginationAndPayload) {
    const auto envelope =
        decode<std::vector<Item>>(R"({"meta":{"code":"OK","message":"fine","pagination":{"limit":2,"next":"c=1&d"}},)"
                                  R"("data":[{"id":1,"title":"a","created_at":978307260000},{"id":2,"title":"b"}]})");
    EXPECT_EQ(envelope.meta, ApiResponseMeta("OK", "fine", ApiResponsePagination(2, "c=1&d")));
    EXPECT_EQ(envelope.data, (std::vector<Item>{Item(1, "a", Date(60)), Item(2, "b")}));
}

TEST(Envelope, HasNoPayloadWithoutDataAndWithNullData) {
    EXPECT_FALSE(decode<Item>(R"({"meta":{"code":"a","message":"b"}})").data);
    EXPECT_FALSE(decode<Item>(R"({"meta":{"code":"a","message":"b"},"data":null})").data);
    EXPECT_FALSE(decode<ApiEmptyDataResponse>(R"({"meta":{"code":"a","message":"b"},"data":null})").data);
}

TEST(Envelope, TakesAnyDataAsAnEmptyPayload) {
    for (const std::string_view data : {"{}", "[]", "[1,{}]", "\"text\"", "0", "1.5", "true", R"({"a":{"b":[]}})"}) {
        const std::string json = R"({"meta":{"code":"a","message":"b"},"data":)" + std::string(data) + "}";
        EXPECT_TRUE(decode<ApiEmptyDataResponse>(json).data) << data;
    }
}

TEST(Envelope, HasNoPaginationWithoutOneAndWithANullOne) {
    EXPECT_FALSE(decode<Item>(R"({"meta":{"code":"a","message":"b"}})").meta.pagination);
    EXPECT_FALSE(decode<Item>(R"({"meta":{"code":"a","message":"b","pagination":null}})").meta.pagination);
}

TEST(Envelope, HasNoNextPageWithoutOneAndWithANullOne) {
    for (const std::string_view pagination : {R"({"limit":9})", R"({"limit":9,"next":null})"}) {
        const auto envelope =
            decode<Item>(R"({"meta":{"code":"a","message":"b","pagination":)" + std::string(pagination) + "}}");
        EXPECT_EQ(envelope.meta.pagination, ApiResponsePagination(9)) << pagination;
    }
}

TEST(Envelope, IgnoresUnknownKeysAtEveryLevel) {
    const auto envelope = decode<Item>(R"({"x":[],"meta":{"x":{},"code":"a","message":"b",)"
                                       R"("pagination":{"x":1e400,"limit":1}},"data":{"x":0,"id":1,"title":"t"}})");
    EXPECT_EQ(envelope.data, Item(1, "t"));
}

TEST(Envelope, RefusesEveryWrongShape) {
    for (const std::string_view json :
         {"",
          "null",
          "[]",
          "\"\"",
          "{}",
          "<html></html>",
          R"({"data":{}})",
          R"({"meta":null})",
          R"({"meta":[]})",
          R"({"meta":"OK"})",
          R"({"meta":{}})",
          R"({"meta":{"code":"a"}})",
          R"({"meta":{"message":"a"}})",
          R"({"meta":{"code":200,"message":"b"}})",
          R"({"meta":{"code":"a","message":null}})",
          R"({"meta":{"code":null,"message":"b"}})",
          R"({"meta":{"code":"a","message":["b"]}})",
          R"({"Meta":{"code":"a","message":"b"}})",
          R"({"meta":{"code":"a","message":"b","pagination":{}}})",
          R"({"meta":{"code":"a","message":"b","pagination":[]}})",
          R"({"meta":{"code":"a","message":"b","pagination":{"limit":"2"}}})",
          R"({"meta":{"code":"a","message":"b","pagination":{"limit":2.5}}})",
          R"({"meta":{"code":"a","message":"b","pagination":{"limit":9223372036854775808}}})",
          R"({"meta":{"code":"a","message":"b","pagination":{"limit":null}}})",
          R"({"meta":{"code":"a","message":"b","pagination":{"limit":1,"next":2}}})",
          R"({"meta":{"code":"a","message":"b"},"data":[]})",
          R"({"meta":{"code":"a","message":"b"},"data":{}})",
          R"({"meta":{"code":"a","message":"b"},"data":{"id":"1","title":"t"}})",
          R"({"meta":{"code":"a","message":"b"}} x)",
          R"({"meta":{"code":"a","message":"b"},)",
          "{\"meta\":{\"code\":\"\xff\",\"message\":\"b\"}}"}) {
        EXPECT_THROW(decode<Item>(json), DecodingError) << json;
    }
}

TEST(Envelope, WritesMetaFirstAndOnlyWhatIsPresent) {
    EXPECT_EQ(again<Item>(R"({"data":null,"meta":{"pagination":null,"message":"b","code":"a"}})"),
              R"({"meta":{"code":"a","message":"b"}})");
    EXPECT_EQ(again<Item>(R"({"data":{"title":"t","id":1},"meta":{"message":"b","code":"a",)"
                          R"("pagination":{"next":"n","limit":3}}})"),
              R"({"meta":{"code":"a","message":"b","pagination":{"limit":3,"next":"n"}},)"
              R"("data":{"id":1,"title":"t"}})");
    EXPECT_EQ(again<Item>(R"({"meta":{"code":"a","message":"b","pagination":{"limit":3}}})"),
              R"({"meta":{"code":"a","message":"b","pagination":{"limit":3}}})");
}

TEST(Envelope, WritesAnEmptyPayloadAsAnEmptyObject) {
    EXPECT_EQ(again<ApiEmptyDataResponse>(R"({"meta":{"code":"a","message":"b"},"data":[1]})"),
              R"({"meta":{"code":"a","message":"b"},"data":{}})");
}

TEST(Envelope, IsEqualWhenMetaAndPayloadAre) {
    const ApiResponseMeta plain("a", "b");
    EXPECT_EQ(plain, ApiResponseMeta("a", "b"));
    EXPECT_NE(plain, ApiResponseMeta("a", "b", ApiResponsePagination(1)));
    EXPECT_NE(plain, ApiResponseMeta("a", "c"));
    EXPECT_NE(ApiResponsePagination(1), ApiResponsePagination(1, "n"));
    EXPECT_EQ(ApiWebResponseObject<Item>(plain, Item(1, "t")), ApiWebResponseObject<Item>(plain, Item(1, "t")));
    EXPECT_NE(ApiWebResponseObject<Item>(plain, Item(1, "t")), ApiWebResponseObject<Item>(plain));
}

TEST(AnyApiWebResponseObject, GivesBackWhatItWasMadeOf) {
    const ApiWebResponseObject<Item> envelope(ApiResponseMeta("a", "b"), Item(1, "t"));
    AnyApiWebResponseObject any(envelope);
    EXPECT_EQ(any.meta(), envelope.meta);
    EXPECT_EQ(any.payloadType(), ApiPayloadType::of<Item>().type());
    EXPECT_EQ(std::move(any).take<Item>(), envelope);
}

TEST(AnyApiWebResponseObject, DecodesTheChosenPayload) {
    const ApiPayloadType payload = ApiPayloadType::of<Item>();
    EXPECT_EQ(payload, ApiPayloadType::of<Item>());
    EXPECT_FALSE(payload == ApiPayloadType::of<std::vector<Item>>());
    AnyApiWebResponseObject any =
        payload.decode(Data(R"({"meta":{"code":"a","message":"b"},"data":{"id":1,"title":"t"}})"), decoder);
    EXPECT_EQ(std::move(any).take<Item>().data, Item(1, "t"));
}

TEST(AnyApiWebResponseObjectDeathTest, StopsTheProcessWhenItIsTakenAsSomethingElse) {
    AnyApiWebResponseObject any(ApiWebResponseObject<Item>(ApiResponseMeta("a", "b")));
    EXPECT_EXIT((void)std::move(any).take<std::string>(), ::testing::KilledBySignal(SIGABRT), "another payload type");
}

} // namespace tovrel::tests
