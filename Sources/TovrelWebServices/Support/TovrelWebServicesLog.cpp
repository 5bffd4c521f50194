#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>

#include <memory>
#include <mutex>
#include <utility>

namespace tovrel {

namespace {

constexpr std::string_view subsystem = "com.tovrel.frameworks.tovrelservice";
static_assert(subsystem.size() == 35);

struct Channel {
    std::mutex mutex;
    TovrelLogger<TovrelWebServicesLogCategory> logger{
        TovrelOSLogWriter::make(std::string(subsystem), std::make_shared<TovrelWebServicesOSLogExecutor>()),
        TovrelLogLevel::warning, true};
};

static_assert(static_cast<int>(TovrelLogLevel::warning) == 3);

Channel& channel() {
    static Channel instance;
    return instance;
}

} // namespace

TovrelWebServicesOSLogExecutor::TovrelWebServicesOSLogExecutor() = default;

TovrelWebServicesOSLogExecutor::~TovrelWebServicesOSLogExecutor() = default;

void TovrelWebServicesOSLogExecutor::log(const Logger& logger, OSLogType level, std::string_view message) const {
    if (logger.isEnabled(level)) {
        logger.log(level, message);
    }
}

TovrelLogger<TovrelWebServicesLogCategory> TovrelLoggers::TWS() {
    const std::scoped_lock lock(channel().mutex);
    return channel().logger;
}

void TovrelLoggers::setTWS(TovrelLogger<TovrelWebServicesLogCategory> logger) {
    const std::scoped_lock lock(channel().mutex);
    channel().logger = std::move(logger);
}

} // namespace tovrel
