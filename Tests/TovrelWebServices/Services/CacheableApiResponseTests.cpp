#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelWebServices/Services/CacheableApiResponse.hpp>
#include <TovrelWebServices/Services/Records.hpp>

#include <gtest/gtest.h>

namespace tovrel::tests {

static_assert(Cacheable<CacheableApiResponse<Item>>);
static_assert(!Cacheable<ApiWebResponseObject<Item>>);

namespace {

CacheableApiResponse<Item> cached(std::optional<Item> data) {
    return CacheableApiResponse<Item>(ApiWebResponseObject<Item>(ApiResponseMeta("a", "b"), std::move(data)), Date(90),
                                      std::make_shared<const CacheItemConfiguration>("latest", 60.0));
}

constexpr std::string_view json = R"({"response":{"meta":{"code":"a","message":"b"},"data":{"id":1,"title":"t"}},)"
                                  R"("creationDate":90,"cacheConfiguration":{"key":"latest","lifetime":60}})";

std::string without(std::string_view key) {
    std::string text(json);
    text.replace(text.find(key), key.size(), "x");
    return text;
}

} // namespace

TEST(CacheableApiResponse, WritesResponseDateAndConfigurationInThisOrder) {
    EXPECT_EQ(JSONEncoder().encode(cached(Item(1, "t"))), Data(json));
}

TEST(CacheableApiResponse, WritesItsDateInTheFormOfTheEncoder) {
    const JSONEncoder encoder(KeyEncodingStrategy::convertToSnakeCase(), DateEncodingStrategy::millisecondsSince1970());
    EXPECT_EQ(encoder.encode(cached(std::nullopt)),
              Data(R"({"response":{"meta":{"code":"a","message":"b"}},"creation_date":978307290000,)"
                   R"("cache_configuration":{"key":"latest","lifetime":60}})"));
}

TEST(CacheableApiResponse, ComesBackFromWhatItWasWrittenAs) {
    for (const std::optional<Item>& data : {std::optional(Item(1, "t", Date(5))), std::optional<Item>()}) {
        const CacheableApiResponse<Item> item = cached(data);
        const auto back = JSONDecoder().decode<CacheableApiResponse<Item>>(JSONEncoder().encode(item));
        EXPECT_EQ(back.response, item.response);
        EXPECT_EQ(back.creationDate, item.creationDate);
        EXPECT_EQ(*back.cacheConfiguration, *item.cacheConfiguration);
    }
}

TEST(CacheableApiResponse, KeepsAnAbsentPayloadAbsent) {
    const auto back = JSONDecoder().decode<CacheableApiResponse<Item>>(JSONEncoder().encode(cached(std::nullopt)));
    EXPECT_FALSE(back.response.data);
    EXPECT_EQ(JSONEncoder().encode(back), JSONEncoder().encode(cached(std::nullopt)));
}

TEST(CacheableApiResponse, NeedsAllThreeMembers) {
    for (const std::string_view key : {"response", "creationDate", "cacheConfiguration"}) {
        try {
            JSONDecoder().decode<CacheableApiResponse<Item>>(Data(without(key)));
            ADD_FAILURE() << key;
        } catch (const DecodingError& error) {
            EXPECT_EQ(error.kind(), DecodingError::Kind::keyNotFound) << key;
        }
    }
}

TEST(CacheableApiResponse, PassesTheErrorsOfItsMembersOn) {
    for (const std::string_view text :
         {R"([])", R"({"response":{},"creationDate":90,"cacheConfiguration":{"key":"k"}})",
          R"({"response":{"meta":{"code":"a","message":"b"}},"creationDate":"x","cacheConfiguration":{"key":"k"}})",
          R"({"response":{"meta":{"code":"a","message":"b"}},"creationDate":90,"cacheConfiguration":{}})",
          R"({"response":{"meta":{"code":"a","message":"b"}},"creationDate":90,"cacheConfiguration":null})"}) {
        EXPECT_THROW(JSONDecoder().decode<CacheableApiResponse<Item>>(Data(text)), DecodingError) << text;
    }
}

TEST(CacheableApiResponse, ChangesOnlyItsDateWithItsDate) {
    auto item = JSONDecoder().decode<CacheableApiResponse<Item>>(Data(json));
    item.creationDate = Date(120);
    EXPECT_EQ(item.response, cached(Item(1, "t")).response);
    EXPECT_EQ(*item.cacheConfiguration, CacheItemConfiguration("latest", 60.0));
    EXPECT_EQ(item.creationDate, Date(120));
}

TEST(CacheableApiResponse, SharesItsConfigurationAmongCopies) {
    const CacheableApiResponse<Item> item = cached(Item(1, "t"));
    const CacheableApiResponse<Item> copy = item;
    EXPECT_EQ(copy.cacheConfiguration, item.cacheConfiguration);
}

TEST(CacheableApiResponseDeathTest, StopsTheProcessWithoutAConfiguration) {
    EXPECT_EXIT(CacheableApiResponse<Item>(ApiWebResponseObject<Item>(), Date(0), nullptr),
                ::testing::KilledBySignal(SIGABRT), "needs a cache configuration");
}

} // namespace tovrel::tests
