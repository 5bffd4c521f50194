#include <Platform/System/Logger.hpp>

#include <gmock/gmock.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tovrel::tests {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A sink that can be held, as a stalled journal is.
class Sink final : public SystemLogSink {
public:
    void write(const SystemLogRecord& record) override {
        std::unique_lock lock(mutex_);
        released_.wait(lock, [this] { return !isHeld_; });
        messages_.push_back(record.message);
    }

    void hold() {
        const std::scoped_lock lock(mutex_);
        isHeld_ = true;
    }

    void release() {
        const std::scoped_lock lock(mutex_);
        isHeld_ = false;
        released_.notify_all();
    }

    [[nodiscard]] std::vector<std::string> messages() const {
        const std::scoped_lock lock(mutex_);
        return messages_;
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable released_;
    bool isHeld_ = false;
    std::vector<std::string> messages_;
};

class SystemLogTest : public ::testing::Test {
protected:
    void SetUp() override {
        SystemLog::setSink(sink_);
        SystemLog::setMessagesPublic(true);
    }

    void TearDown() override {
        SystemLog::flush();
        SystemLog::setMinimumType(OSLogType::default_);
    }

    std::shared_ptr<Sink> sink_ = std::make_shared<Sink>();
    Logger logger_{"com.example.application", "General"};
};

} // namespace

TEST_F(SystemLogTest, WritesRecordsInTheirOrder) {
    logger_.log(OSLogType::error, "first");
    logger_.log(OSLogType::default_, "second");
    SystemLog::flush();
    EXPECT_THAT(sink_->messages(), ElementsAre("first", "second"));
}

TEST_F(SystemLogTest, DropsRecordsOfADisabledType) {
    EXPECT_FALSE(logger_.isEnabled(OSLogType::info));
    logger_.log(OSLogType::info, "unseen");
    SystemLog::flush();
    EXPECT_THAT(sink_->messages(), IsEmpty());
    SystemLog::setMinimumType(OSLogType::debug);
    logger_.log(OSLogType::debug, "seen");
    SystemLog::flush();
    EXPECT_THAT(sink_->messages(), ElementsAre("seen"));
}

TEST_F(SystemLogTest, DoesNotBlockItsCallerWhenTheSinkStalls) {
    sink_->hold();
    for (int i = 0; i < 100; ++i) {
        logger_.log(OSLogType::error, "stalled");
    }
    EXPECT_THAT(sink_->messages(), IsEmpty());
    sink_->release();
    SystemLog::flush();
    EXPECT_EQ(sink_->messages().size(), 100U);
}

TEST_F(SystemLogTest, HidesMessagesThatAreNotPublic) {
    SystemLog::setMessagesPublic(false);
    logger_.log(OSLogType::error, "a name");
    SystemLog::flush();
    EXPECT_THAT(sink_->messages(), ElementsAre("<private>"));
}

} // namespace tovrel::tests
