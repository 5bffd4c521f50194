#include <Platform/System/Logger.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace tovrel::tests {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class Sink final : public SystemLogSink {
public:
    std::vector<std::string> records;

    void write(const SystemLogRecord& record) override {
        records.push_back(record.subsystem + "|" + record.category + "|" +
                          std::to_string(static_cast<int>(record.type)) + "|" + record.message);
    }
};

/// The system log of one test.
class TovrelWebServicesLog : public ::testing::Test {
protected:
    void SetUp() override {
        SystemLog::setSink(sink_);
        SystemLog::setMessagesPublic(true);
    }

    void TearDown() override {
        SystemLog::flush();
        SystemLog::setMinimumType(OSLogType::default_);
    }

    [[nodiscard]] const std::vector<std::string>& written() const {
        SystemLog::flush();
        return sink_->records;
    }

    std::shared_ptr<Sink> sink_ = std::make_shared<Sink>();
    LogSite site_{"File", "function()", 7};
};

} // namespace

TEST_F(TovrelWebServicesLog, WritesToTheLibrarysSubsystemUnderItsCategory) {
    TovrelLoggers::TWS().log(TovrelLogLevel::error, TovrelWebServicesLogCategory::general, "lost", site_);
    EXPECT_THAT(written(), ElementsAre("com.tovrel.frameworks.tovrelservice|General|3|lost"));
}

TEST_F(TovrelWebServicesLog, EmitsPercentSignsLiterally) {
    TovrelLoggers::TWS().log(TovrelLogLevel::warning, TovrelWebServicesLogCategory::general, "100%s of %n", site_);
    EXPECT_THAT(written(), ElementsAre("com.tovrel.frameworks.tovrelservice|General|2|100%s of %n"));
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
    EXPECT_THAT(written(), ElementsAre("s|c|3|<private>"));
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
