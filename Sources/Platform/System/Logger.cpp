#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/System/Logger.hpp>
#include <Platform/System/SystemLogSinks.hpp>

#include <boost/asio/post.hpp>

#include <atomic>
#include <future>
#include <mutex>
#include <utility>

namespace tovrel {

namespace {

#ifdef NDEBUG
constexpr bool messagesArePublicAtFirst = false;
#else
constexpr bool messagesArePublicAtFirst = true;
#endif

/// The queue keeps callers from a sink that blocks, as a stalled journal does.
class Channel {
public:
    static Channel& shared() {
        static Channel channel;
        return channel;
    }

    void setSink(std::shared_ptr<SystemLogSink> sink) {
        const std::scoped_lock lock(mutex_);
        sink_ = std::move(sink);
    }

    void write(SystemLogRecord record) {
        boost::asio::post(queue_, [this, record = std::move(record)] { sink()->write(record); });
    }

    void flush() {
        auto written = std::make_shared<std::promise<void>>();
        std::future<void> done = written->get_future();
        boost::asio::post(queue_, [written] { written->set_value(); });
        done.wait();
    }

    std::atomic<OSLogType> minimumType{OSLogType::default_};
    std::atomic<bool> messagesArePublic{messagesArePublicAtFirst};

private:
    Channel() : queue_(TaskPool::blocking()), sink_(detail::makeDefaultSystemLogSink()) {}

    std::shared_ptr<SystemLogSink> sink() {
        const std::scoped_lock lock(mutex_);
        return sink_;
    }

    Executor queue_;
    std::mutex mutex_;
    std::shared_ptr<SystemLogSink> sink_;
};

} // namespace

SystemLogRecord::SystemLogRecord(std::string recordSubsystem, std::string recordCategory, OSLogType recordType,
                                 std::string recordMessage)
    : subsystem(std::move(recordSubsystem)),
      category(std::move(recordCategory)),
      type(recordType),
      message(std::move(recordMessage)) {}

SystemLogSink::SystemLogSink() = default;

SystemLogSink::~SystemLogSink() = default;

void SystemLog::setMinimumType(OSLogType type) {
    Channel::shared().minimumType = type;
}

bool SystemLog::isEnabled(OSLogType type) {
    return type >= Channel::shared().minimumType.load();
}

void SystemLog::setMessagesPublic(bool isPublic) {
    Channel::shared().messagesArePublic = isPublic;
}

void SystemLog::setSink(std::shared_ptr<SystemLogSink> sink) {
    Channel::shared().setSink(std::move(sink));
}

void SystemLog::flush() {
    Channel::shared().flush();
}

Logger::Logger(std::string subsystem, std::string category)
    : subsystem_(std::move(subsystem)), category_(std::move(category)) {}

bool Logger::isEnabled(OSLogType type) const {
    return SystemLog::isEnabled(type);
}

void Logger::log(OSLogType type, std::string_view message) const {
    if (!isEnabled(type)) {
        return;
    }
    std::string text(Channel::shared().messagesArePublic ? message : std::string_view("<private>"));
    Channel::shared().write(SystemLogRecord(subsystem_, category_, type, std::move(text)));
}

} // namespace tovrel
