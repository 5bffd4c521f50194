#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/System/Logger.hpp>

#include <concepts>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace tovrel {

/// The levels of a logger, from the least to the most severe.
enum class TovrelLogLevel { verbose, debug, info, warning, error };

/// Where in the source a message was logged. Kept apart from the message, which is written as it is.
struct TOVREL_EXPORT LogSite {
    std::string_view file;
    std::string_view function;
    int line;

    LogSite(std::string_view siteFile, std::string_view siteFunction, int siteLine)
        : file(siteFile), function(siteFunction), line(siteLine) {}
};

/// Takes the messages of loggers. Implementations are thread-safe and do not block.
class TOVREL_EXPORT TovrelLogWriter {
public:
    virtual ~TovrelLogWriter();
    virtual void write(TovrelLogLevel level, std::string_view category, std::string_view message,
                       const LogSite& site) = 0;

protected:
    TovrelLogWriter();
};

/// Performs the system-log call of one library.
class TOVREL_EXPORT TovrelLogExecutable {
public:
    virtual ~TovrelLogExecutable();
    virtual void log(const Logger& logger, OSLogType level, std::string_view message) const = 0;

protected:
    TovrelLogExecutable();
};

/// Writes to the system log of a subsystem, through an executable.
class TOVREL_EXPORT TovrelOSLogWriter final : public TovrelLogWriter {
public:
    static std::shared_ptr<TovrelOSLogWriter> make(std::string subsystem,
                                                   std::shared_ptr<const TovrelLogExecutable> logExecutable);
    ~TovrelOSLogWriter() override;

    void write(TovrelLogLevel level, std::string_view category, std::string_view message, const LogSite& site) override;

private:
    TovrelOSLogWriter(std::string subsystem, std::shared_ptr<const TovrelLogExecutable> logExecutable);

    std::string subsystem_;
    std::shared_ptr<const TovrelLogExecutable> logExecutable_;
};

/// Logs messages of a category type, whose values have a `rawValue()`. A value that shares its writer; thread-safe.
template <class Category>
class TovrelLogger {
public:
    /// Messages below `logLevel`, and all messages of a disabled logger, are dropped.
    TovrelLogger(std::shared_ptr<TovrelLogWriter> logWriter, TovrelLogLevel logLevel, bool isEnabled)
        : logWriter_(std::move(logWriter)), logLevel_(logLevel), isEnabled_(isEnabled) {}

    void log(TovrelLogLevel level, Category category, std::string_view message, const LogSite& site) const {
        if (isLogged(level)) {
            logWriter_->write(level, category.rawValue(), message, site);
        }
    }

    /// As above, for a message that costs something to make: it is made only if it is logged.
    template <std::invocable MakeMessage>
    void log(TovrelLogLevel level, Category category, MakeMessage&& makeMessage, const LogSite& site) const {
        if (isLogged(level)) {
            logWriter_->write(level, category.rawValue(), std::forward<MakeMessage>(makeMessage)(), site);
        }
    }

    [[nodiscard]] TovrelLogLevel logLevel() const { return logLevel_; }
    [[nodiscard]] bool isEnabled() const { return isEnabled_; }

private:
    [[nodiscard]] bool isLogged(TovrelLogLevel level) const { return isEnabled_ && level >= logLevel_; }

    std::shared_ptr<TovrelLogWriter> logWriter_;
    TovrelLogLevel logLevel_;
    bool isEnabled_;
};

} // namespace tovrel
