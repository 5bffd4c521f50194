#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tovrel::tests {

TEST(WebServiceEnvironment, IsMadeFromTheStageByNameToo) {
    EXPECT_EQ(TovrelApiEnvironment::production(), TovrelApiEnvironment(TovrelEnvironment::production));
    EXPECT_EQ(TovrelCdnEnvironment::development(), TovrelCdnEnvironment(TovrelEnvironment::development));
    EXPECT_EQ(TovrelAccountsEnvironment::test(), TovrelAccountsEnvironment(TovrelEnvironment::test));
    EXPECT_EQ(TovrelApiEnvironment::test().domain(), TovrelApiEnvironment(TovrelEnvironment::test).domain());
    EXPECT_EQ(TovrelApiEnvironment::test().environment(), TovrelEnvironment::test);
    EXPECT_NE(TovrelApiEnvironment::test(), TovrelApiEnvironment::production());
}

TEST(WebServiceEnvironment, HasAHostOfItsOwnForEveryEndpointAndStage) {
    std::set<std::string_view> hosts;
    for (const auto stage : {TovrelEnvironment::development, TovrelEnvironment::test, TovrelEnvironment::production}) {
        hosts.insert(TovrelApiEnvironment(stage).domain());
        hosts.insert(TovrelCdnEnvironment(stage).domain());
        hosts.insert(TovrelAccountsEnvironment(stage).domain());
    }
    EXPECT_EQ(hosts.size(), 9U);
    for (const std::string_view host : hosts) {
        EXPECT_EQ(host.find_first_of(":/ "), std::string_view::npos) << host;
    }
}

TEST(TovrelHttpEnvironment, ReturnsItsHostWhateverTheStage) {
    for (const auto stage : {TovrelEnvironment::development, TovrelEnvironment::test, TovrelEnvironment::production}) {
        const TovrelHttpEnvironment environment(stage, "Files.example");
        EXPECT_EQ(environment.domain(), "Files.example");
        EXPECT_EQ(environment.environment(), stage);
    }
}

} // namespace tovrel::tests
