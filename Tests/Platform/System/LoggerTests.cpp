#include <gmock/gmock.h>

#include <Support/SystemLogTest.hpp>

namespace tovrel::tests {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class LoggerTest : public SystemLogTest {
protected:
    Logger logger_{"com.example.application", "General"};
};

} // namespace

TEST_F(LoggerTest, WritesRecordsInTheirOrder) {
    logger_.log(OSLogType::error, "first");
    logger_.log(OSLogType::default_, "second");
    EXPECT_THAT(writtenMessages(), ElementsAre("first", "second"));
}

TEST_F(LoggerTest, DropsRecordsOfADisabledType) {
    EXPECT_FALSE(logger_.isEnabled(OSLogType::info));
    logger_.log(OSLogType::info, "unseen");
    EXPECT_THAT(written(), IsEmpty());
    SystemLog::setMinimumType(OSLogType::debug);
    logger_.log(OSLogType::debug, "seen");
    EXPECT_THAT(writtenMessages(), ElementsAre("seen"));
}

TEST_F(LoggerTest, DoesNotBlockItsCallerWhenTheSinkStalls) {
    sink_->hold();
    for (int i = 0; i < 100; ++i) {
        logger_.log(OSLogType::error, "stalled");
    }
    EXPECT_THAT(sink_->records(), IsEmpty());
    sink_->release();
    EXPECT_EQ(written().size(), 100U);
}

TEST_F(LoggerTest, HidesMessagesThatAreNotPublic) {
    SystemLog::setMessagesPublic(false);
    logger_.log(OSLogType::error, "a name");
    EXPECT_THAT(writtenMessages(), ElementsAre("<private>"));
}

} // namespace tovrel::tests
