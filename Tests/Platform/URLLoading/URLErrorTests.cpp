#include <Platform/URLLoading/URLError.hpp>

#include <gtest/gtest.h>

#include <string>

namespace tovrel {
namespace {

TEST(URLError, EqualsByKindWhateverTheContext) {
    EXPECT_EQ(URLError::timedOut("GET a"), URLError::timedOut("GET b"));
    EXPECT_FALSE(URLError::timedOut() == URLError::cancelled());
    EXPECT_EQ(URLError::timedOut().kind(), URLError::Kind::timedOut);
}

TEST(URLError, TellsWhatFailedAndWhere) {
    EXPECT_STREQ(URLError::timedOut("GET api.example").what(), "timed out (GET api.example)");
    EXPECT_STREQ(URLError::cancelled().what(), "cancelled");
}

TEST(URLError, HasAFactoryAndATextOfItsOwnForEveryKind) {
    using Kind = URLError::Kind;
    const std::pair<Kind, URLError> errors[] = {{Kind::notConnectedToInternet, URLError::notConnectedToInternet()},
                                                {Kind::timedOut, URLError::timedOut()},
                                                {Kind::cannotFindHost, URLError::cannotFindHost()},
                                                {Kind::cannotConnectToHost, URLError::cannotConnectToHost()},
                                                {Kind::networkConnectionLost, URLError::networkConnectionLost()},
                                                {Kind::secureConnectionFailed, URLError::secureConnectionFailed()},
                                                {Kind::certificateUntrusted, URLError::certificateUntrusted()},
                                                {Kind::cancelled, URLError::cancelled()},
                                                {Kind::badServerResponse, URLError::badServerResponse()},
                                                {Kind::dataLengthExceedsMaximum, URLError::dataLengthExceedsMaximum()},
                                                {Kind::badURL, URLError::badURL()},
                                                {Kind::unsupportedURL, URLError::unsupportedURL()},
                                                {Kind::insecureURL, URLError::insecureURL()},
                                                {Kind::tooManyRedirects, URLError::tooManyRedirects()},
                                                {Kind::invalidHeader, URLError::invalidHeader()},
                                                {Kind::cannotDecodeContentData, URLError::cannotDecodeContentData()},
                                                {Kind::unknown, URLError::unknown()}};
    for (const auto& [kind, error] : errors) {
        EXPECT_EQ(error.kind(), kind);
        for (const auto& [otherKind, other] : errors) {
            EXPECT_EQ(error == other, kind == otherKind);
            EXPECT_EQ(std::string(error.what()) == other.what(), kind == otherKind);
        }
    }
}

} // namespace
} // namespace tovrel
