#include <Platform/Coding/Base64.hpp>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace tovrel {
namespace {

TEST(Base64, EncodesTheVectorsOfItsStandard) {
    const std::pair<const char*, const char*> vectors[] = {{"", ""},
                                                           {"f", "Zg=="},
                                                           {"fo", "Zm8="},
                                                           {"foo", "Zm9v"},
                                                           {"foob", "Zm9vYg=="},
                                                           {"fooba", "Zm9vYmE="},
                                                           {"foobar", "Zm9vYmFy"}};
    for (const auto& [bytes, text] : vectors) {
        EXPECT_EQ(base64Encoded(bytes), text);
        EXPECT_EQ(base64Decoded(text), Data(bytes));
    }
}

TEST(Base64, CarriesEveryByte) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    EXPECT_EQ(base64Decoded(base64Encoded(bytes)), Data(bytes));
}

TEST(Base64, RefusesMissingOrMisplacedPadding) {
    for (const char* text : {"Zg", "Zg=", "Zm8", "Z===", "=Zg=", "Zg==Zg==", "====", "Zm9vYg==="}) {
        EXPECT_EQ(base64Decoded(text), std::nullopt) << text;
    }
}

TEST(Base64, RefusesOtherCharacters) {
    for (const char* text : {"Zm9-", "Zm9_", "Zm9 ", "Zm\n9", "Zm9\xff", "Zm9v\n"}) {
        EXPECT_EQ(base64Decoded(text), std::nullopt) << text;
    }
}

TEST(Base64, RefusesUnusedBitsThatAreNotZero) {
    EXPECT_EQ(base64Decoded("Zh=="), std::nullopt);
    EXPECT_EQ(base64Decoded("Zm9="), std::nullopt);
}

} // namespace
} // namespace tovrel
