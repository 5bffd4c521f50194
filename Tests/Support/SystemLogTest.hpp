#pragma once

#include <Platform/System/Logger.hpp>

#include <gtest/gtest.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tovrel::tests {

/// A sink that keeps what it is given, and that can be held, as a stalled journal is.
class LogSink final : public SystemLogSink {
public:
    void write(const SystemLogRecord& record) override {
        std::unique_lock lock(mutex_);
        released_.wait(lock, [this] { return !isHeld_; });
        records_.push_back(record);
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

    [[nodiscard]] std::vector<SystemLogRecord> records() const {
        const std::scoped_lock lock(mutex_);
        return records_;
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable released_;
    bool isHeld_ = false;
    std::vector<SystemLogRecord> records_;
};

/// The system log of one test: public, and kept in `sink_`.
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

    [[nodiscard]] std::vector<SystemLogRecord> written() const {
        SystemLog::flush();
        return sink_->records();
    }

    [[nodiscard]] std::vector<std::string> writtenMessages() const {
        std::vector<std::string> messages;
        for (const SystemLogRecord& record : written()) {
            messages.push_back(record.message);
        }
        return messages;
    }

    std::shared_ptr<LogSink> sink_ = std::make_shared<LogSink>();
};

} // namespace tovrel::tests
