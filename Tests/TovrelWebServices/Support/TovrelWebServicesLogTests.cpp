#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>

#include <gmock/gmock.h>

#include <Support/SystemLogTest.hpp>

namespace tovrel::tests {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class TovrelWebServicesLog : public SystemLogTest {
protected:
    LogSite site_{"File", "function()", 7};
};

} // namespace

TEST_F(TovrelWebServicesLog, WritesToTheLibrarysSubsystemUnderItsCategory) {
    TovrelLoggers::TWS().log(TovrelLogLevel::error, TovrelWebServicesLogCategory::general, "lost", site_);
    ASSERT_EQ(written().size(), 1U);
    const SystemLogRecord record = written().front();
    EXPECT_EQ(record.subsystem, "com.tovrel.frameworks.tovrelservice");
    EXPECT_EQ(record.category, "General");
    EXPECT_EQ(record.type, OSLogType::error);
    EXPECT_EQ(record.message, "lost");
}

TEST_F(TovrelWebServicesLog, EmitsPercentSignsLiterally) {
    TovrelLoggers::TWS().log(TovrelLogLevel::warning, TovrelWebServicesLogCategory::general, "100%s of %n", site_);
    EXPECT_THAT(writtenMessages(), ElementsAre("100%s of %n"));
}

TEST_F(TovrelWebServicesLog, EmitsNothingBelowTheLoggersLevel) {
    int made = 0;
    TovrelLoggers::TWS().log(
        TovrelLogLevel::info, TovrelWebServicesLogCategory::general,
        [&made] {
            ++made;
            return std::string("unseen");
        },
        site_);
    EXPECT_THAT(written(), IsEmpty());
    EXPECT_EQ(made, 0);
}

TEST_F(TovrelWebServicesLog, EmitsNothingWithItsLevelDisabledInTheSystem) {
    SystemLog::setMinimumType(OSLogType::fault);
    TovrelWebServicesOSLogExecutor().log(Logger("s", "c"), OSLogType::error, "unseen");
    EXPECT_THAT(written(), IsEmpty());
}

TEST_F(TovrelWebServicesLog, HidesMessagesThatAreNotPublic) {
    SystemLog::setMessagesPublic(false);
    TovrelWebServicesOSLogExecutor().log(Logger("s", "c"), OSLogType::error, "a name");
    EXPECT_THAT(writtenMessages(), ElementsAre("<private>"));
}

TEST_F(TovrelWebServicesLog, CanBeReplacedByTheHost) {
    const auto original = TovrelLoggers::TWS();
    TovrelLoggers::setTWS(TovrelLogger<TovrelWebServicesLogCategory>(nullptr, TovrelLogLevel::verbose, false));
    TovrelLoggers::TWS().log(TovrelLogLevel::error, TovrelWebServicesLogCategory::general, "unseen", site_);
    TovrelLoggers::setTWS(original);
    EXPECT_THAT(written(), IsEmpty());
}

TEST(TovrelWebServicesLogCategory, IsMadeFromExactlyItsRawValue) {
    EXPECT_EQ(TovrelWebServicesLogCategory::fromRawValue("General"), TovrelWebServicesLogCategory::general);
    EXPECT_FALSE(TovrelWebServicesLogCategory::fromRawValue("general"));
}

} // namespace tovrel::tests
