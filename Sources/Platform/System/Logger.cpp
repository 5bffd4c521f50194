#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/System/Logger.hpp>
#include <Platform/System/SystemLogSinks.hpp>

#include <boost/asio/post.hpp>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <mutex>
#include <utility>

namespace tovrel {

namespace {

#ifdef NDEBUG
constexpr bool messagesArePublicAtFirst = false;
#else
constexpr bool messagesArePublicAtFirst = true;
#endif

/// How long the end of the process waits for records that are still to be written.
constexpr std::chrono::seconds patienceAtExit{1};

/// The queue keeps callers from a sink that blocks, as a stalled journal does. Records under way own the channel.
class Channel : public std::enable_shared_from_this<Channel> {
public:
    static Channel& shared() {
        static const Owner owner;
        return *owner.channel;
    }

    void setSink(std::shared_ptr<SystemLogSink> sink) {
        const std::scoped_lock lock(mutex_);
        sink_ = std::move(sink);
    }

    void write(SystemLogRecord record) {
        boost::asio::post(queue_,
                          [self = shared_from_this(), record = std::move(record)] { self->sink()->write(record); });
    }

    [[nodiscard]] std::future<void> written() {
        auto promise = std::make_shared<std::promise<void>>();
        boost::asio::post(queue_, [promise] { promise->set_value(); });
        return promise->get_future();
    }

    std::atomic<OSLogType> minimumType{OSLogType::default_};
    std::atomic<bool> messagesArePublic{messagesArePublicAtFirst};

private:
    struct Owner {
        std::shared_ptr<Channel> channel{new Channel()};

        ~Owner() { channel->written().wait_for(patienceAtExit); }
    };

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
    Channel::shared().written().wait();
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
