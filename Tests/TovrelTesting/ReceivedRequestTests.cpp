#include <TovrelTesting/ReceivedRequest.hpp>

#include <gtest/gtest.h>

namespace tovrel::testing {

TEST(ReceivedRequest, SplitsItsTargetAtTheFirstQuestionMark) {
    ReceivedRequest request;
    request.target = "/a/b?c=d?e";
    EXPECT_EQ(request.path(), "/a/b");
    EXPECT_EQ(request.query(), "c=d?e");
}

TEST(ReceivedRequest, HasAnEmptyQueryWithoutAQuestionMark) {
    ReceivedRequest request;
    request.target = "/a/b";
    EXPECT_EQ(request.path(), "/a/b");
    EXPECT_EQ(request.query(), "");
}

TEST(ReceivedRequest, FindsTheFirstHeaderOfAName) {
    ReceivedRequest request;
    request.headers = {{"Accept", "a"}, {"accept", "b"}};
    EXPECT_EQ(request.header("ACCEPT"), "a");
    EXPECT_EQ(request.header("Range"), std::nullopt);
}

} // namespace tovrel::testing
