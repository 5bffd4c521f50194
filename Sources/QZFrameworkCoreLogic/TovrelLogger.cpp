#include <QZFrameworkCoreLogic/TovrelLogger.hpp>

namespace tovrel {

namespace {

OSLogType systemType(TovrelLogLevel level) {
    switch (level) {
    case TovrelLogLevel::verbose:
    case TovrelLogLevel::debug:
        return OSLogType::debug;
    case TovrelLogLevel::info:
        return OSLogType::info;
    case TovrelLogLevel::warning:
        return OSLogType::default_;
    case TovrelLogLevel::error:
        return OSLogType::error;
    }
    return OSLogType::default_;
}

} // namespace

TovrelLogWriter::TovrelLogWriter() = default;

TovrelLogWriter::~TovrelLogWriter() = default;

TovrelLogExecutable::TovrelLogExecutable() = default;

TovrelLogExecutable::~TovrelLogExecutable() = default;

std::shared_ptr<TovrelOSLogWriter> TovrelOSLogWriter::make(std::string subsystem,
                                                           std::shared_ptr<const TovrelLogExecutable> logExecutable) {
    return std::shared_ptr<TovrelOSLogWriter>(new TovrelOSLogWriter(std::move(subsystem), std::move(logExecutable)));
}

TovrelOSLogWriter::TovrelOSLogWriter(std::string subsystem, std::shared_ptr<const TovrelLogExecutable> logExecutable)
    : subsystem_(std::move(subsystem)), logExecutable_(std::move(logExecutable)) {}

TovrelOSLogWriter::~TovrelOSLogWriter() = default;

void TovrelOSLogWriter::write(TovrelLogLevel level, std::string_view category, std::string_view message,
                              const LogSite&) {
    logExecutable_->log(Logger(subsystem_, std::string(category)), systemType(level), message);
}

} // namespace tovrel
