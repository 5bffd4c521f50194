#include <TovrelWebServices/Transport/AcceptEncodingType.hpp>
#include <TovrelWebServices/Transport/AcceptLanguage.hpp>
#include <TovrelWebServices/Transport/CachePolicy.hpp>
#include <TovrelWebServices/Transport/ContentType.hpp>
#include <TovrelWebServices/Transport/DecodingStrategy.hpp>
#include <TovrelWebServices/Transport/HttpMethod.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <unordered_set>

namespace tovrel::tests {

namespace {

std::string languages(const std::vector<AcceptLanguage>& list) {
    return AcceptLanguage::headerValue(list);
}

std::string weight(double value) {
    return AcceptLanguage::numberFormatter().string(value).value_or("nothing");
}

} // namespace

TEST(HttpMethod, HasTheMethodOfTheRequestLineAsItsRawValue) {
    EXPECT_EQ(HttpMethod(HttpMethod::get).rawValue(), "GET");
    EXPECT_EQ(HttpMethod(HttpMethod::post).rawValue(), "POST");
    EXPECT_EQ(HttpMethod(HttpMethod::delete_).rawValue(), "DELETE");
    EXPECT_EQ(HttpMethod(HttpMethod::put).rawValue(), "PUT");
    EXPECT_EQ(HttpMethod(HttpMethod::head).rawValue(), "HEAD");
}

TEST(HttpMethod, IsMadeFromExactlyItsRawValues) {
    for (const std::string_view rawValue : HttpMethod::rawValues) {
        const auto method = HttpMethod::fromRawValue(rawValue);
        ASSERT_TRUE(method);
        EXPECT_EQ(method->rawValue(), rawValue);
    }
    EXPECT_FALSE(HttpMethod::fromRawValue("get"));
    EXPECT_FALSE(HttpMethod::fromRawValue("PATCH"));
    EXPECT_FALSE(HttpMethod::fromRawValue(""));
}

TEST(HttpMethod, CanBeHashed) {
    const std::unordered_set<HttpMethod> methods{HttpMethod::get, HttpMethod::put, HttpMethod::get};
    EXPECT_EQ(methods.size(), 2U);
}

TEST(ContentType, HasTheHeaderValuesOfItsKinds) {
    EXPECT_EQ(ContentType::header, "Content-Type");
    EXPECT_EQ(ContentType::applicationJson().value(), "application/json");
    EXPECT_EQ(ContentType::applicationFormUrlEncoded().value(), "application/x-www-form-urlencoded");
    EXPECT_EQ(ContentType::plainText().value(), "text/plain");
}

TEST(ContentType, PutsABoundaryIntoDoubleQuotesWhateverItHolds) {
    EXPECT_EQ(ContentType::multipartFormData("abc").value(), "multipart/form-data; boundary=\"abc\"");
    EXPECT_EQ(ContentType::multipartFormData("").value(), "multipart/form-data; boundary=\"\"");
    EXPECT_EQ(ContentType::multipartFormData("a\"b c").value(), "multipart/form-data; boundary=\"a\"b c\"");
}

TEST(AcceptEncodingType, HasTheTokensOfTheCodings) {
    EXPECT_EQ(AcceptEncodingType(AcceptEncodingType::gzip).rawValue(), "gzip");
    EXPECT_EQ(AcceptEncodingType(AcceptEncodingType::deflate).rawValue(), "deflate");
    EXPECT_EQ(AcceptEncodingType(AcceptEncodingType::br).rawValue(), "br");
    EXPECT_EQ(AcceptEncodingType(AcceptEncodingType::compress).rawValue(), "compress");
    EXPECT_EQ(AcceptEncodingType(AcceptEncodingType::identity).rawValue(), "identity");
    EXPECT_EQ(AcceptEncodingType(AcceptEncodingType::zstd).rawValue(), "zstd");
    EXPECT_EQ(AcceptEncodingType::fromRawValue("br"), AcceptEncodingType::br);
    EXPECT_FALSE(AcceptEncodingType::fromRawValue("BR"));
}

TEST(AcceptEncodingType, AcceptsDeflateThenGzipByDefaultFromOneSharedList) {
    EXPECT_EQ(AcceptEncodingType::headerValue(AcceptEncodingType::default_()), "deflate, gzip");
    EXPECT_EQ(&AcceptEncodingType::default_(), &AcceptEncodingType::default_());
}

TEST(AcceptEncodingType, KeepsOrderAndRepetitionsInTheHeaderValue) {
    const std::vector<AcceptEncodingType> types{AcceptEncodingType::zstd, AcceptEncodingType::br,
                                                AcceptEncodingType::zstd};
    EXPECT_EQ(AcceptEncodingType::headerValue(types), "zstd, br, zstd");
    EXPECT_EQ(AcceptEncodingType::headerValue({}), "");
}

TEST(AcceptLanguage, ClampsItsWeightBetweenZeroAndOne) {
    EXPECT_EQ(AcceptLanguage("en", 1.7).weight, 1.0);
    EXPECT_EQ(AcceptLanguage("en", -0.2).weight, 0.0);
    EXPECT_EQ(AcceptLanguage("en", std::numeric_limits<double>::infinity()).weight, 1.0);
    EXPECT_EQ(AcceptLanguage("en", 0.25).weight, 0.25);
    EXPECT_FALSE(AcceptLanguage("en").weight);
    EXPECT_TRUE(std::isnan(*AcceptLanguage("en", std::nan("")).weight));
    EXPECT_FALSE(std::signbit(*AcceptLanguage("en", -0.0).weight));
}

TEST(AcceptLanguage, RendersWeightsWithOneToThreeFractionDigitsHalfToEven) {
    EXPECT_EQ(weight(1.0), "1.0");
    EXPECT_EQ(weight(0.9), "0.9");
    EXPECT_EQ(weight(0.875), "0.875");
    EXPECT_EQ(weight(0.12345), "0.123");
    EXPECT_EQ(weight(0.0), "0.0");
    EXPECT_EQ(weight(0.0625), "0.062");
    EXPECT_EQ(weight(0.1875), "0.188");
    EXPECT_EQ(weight(0.9999), "1.0");
    EXPECT_EQ(weight(0.0001), "0.0");
    EXPECT_EQ(weight(std::nan("")), "nothing");
}

TEST(AcceptLanguage, SortsTheMostWantedFirst) {
    EXPECT_EQ(languages({AcceptLanguage("nl", 0.5), AcceptLanguage("en-US"), AcceptLanguage("de", 0.8)}),
              "en-US,de;q=0.8,nl;q=0.5");
}

TEST(AcceptLanguage, KeepsTheCallersOrderAmongEquals) {
    EXPECT_EQ(languages({AcceptLanguage("a", 1.0), AcceptLanguage("b"), AcceptLanguage("c", 1.0)}),
              "a;q=1.0,b,c;q=1.0");
    EXPECT_EQ(languages({AcceptLanguage("x"), AcceptLanguage("y", 1.7), AcceptLanguage("z")}), "x,y;q=1.0,z");
}

TEST(AcceptLanguage, RendersTheBoundsOfAWeight) {
    EXPECT_EQ(languages({AcceptLanguage("en", 1.7)}), "en;q=1.0");
    EXPECT_EQ(languages({AcceptLanguage("en", -0.2)}), "en;q=0.0");
}

TEST(AcceptLanguage, StandsAloneWhereItsWeightCannotBeRendered) {
    EXPECT_EQ(languages({AcceptLanguage("en", std::nan("")), AcceptLanguage("de", 0.1)}), "de;q=0.1,en");
}

TEST(AcceptLanguage, IsAStarForAnEmptyList) {
    EXPECT_EQ(languages({}), "*");
}

TEST(CachePolicy, MapsOntoThePlatformPolicyOfTheSameName) {
    EXPECT_EQ(static_cast<int>(platformCachePolicy(CachePolicy::useProtocolCachePolicy)), 0);
    EXPECT_EQ(static_cast<int>(platformCachePolicy(CachePolicy::reloadIgnoringLocalCacheData)), 1);
    EXPECT_EQ(static_cast<int>(platformCachePolicy(CachePolicy::reloadIgnoringLocalAndRemoteCacheData)), 4);
    EXPECT_EQ(static_cast<int>(platformCachePolicy(CachePolicy::returnCacheDataElseLoad)), 2);
    EXPECT_EQ(static_cast<int>(platformCachePolicy(CachePolicy::returnCacheDataDontLoad)), 3);
    EXPECT_EQ(static_cast<int>(platformCachePolicy(CachePolicy::reloadRevalidatingCacheData)), 5);
}

TEST(DecodingStrategy, HasTwoPresets) {
    EXPECT_EQ(DecodingStrategy::default_(),
              DecodingStrategy(KeyDecodingStrategy::useDefaultKeys(), DateDecodingStrategy::deferredToDate()));
    EXPECT_EQ(
        DecodingStrategy::snakeCaseAndMilliseconds(),
        DecodingStrategy(KeyDecodingStrategy::convertFromSnakeCase(), DateDecodingStrategy::millisecondsSince1970()));
    EXPECT_NE(DecodingStrategy::default_(), DecodingStrategy::snakeCaseAndMilliseconds());
}

} // namespace tovrel::tests
