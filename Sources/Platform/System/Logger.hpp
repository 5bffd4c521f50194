#pragma once

#include <Platform/System/Export.hpp>

#include <memory>
#include <string>
#include <string_view>

namespace tovrel {

/// The severity of a record of the system log.
enum class OSLogType { debug, info, default_, error, fault };

/// One record on its way to the log.
struct TOVREL_EXPORT SystemLogRecord {
    std::string subsystem;
    std::string category;
    OSLogType type;
    std::string message;

    SystemLogRecord(std::string recordSubsystem, std::string recordCategory, OSLogType recordType,
                    std::string recordMessage);
};

/// Where records end up. `write` is called by one thread at a time and may block.
class TOVREL_EXPORT SystemLogSink {
public:
    virtual ~SystemLogSink();
    virtual void write(const SystemLogRecord& record) = 0;

protected:
    SystemLogSink();
};

/// The process's settings of the system log. Thread-safe.
class TOVREL_EXPORT SystemLog {
public:
    SystemLog() = delete;

    /// Records of a lesser type are dropped before anything is copied. Initially `default_`.
    static void setMinimumType(OSLogType type);
    [[nodiscard]] static bool isEnabled(OSLogType type);

    /// Whether messages are written as they are or as "<private>". Initially private where the library was built with
    /// NDEBUG.
    static void setMessagesPublic(bool isPublic);

    /// Replaces the sink. The initial one writes to the journal where its socket exists, else to standard error.
    static void setSink(std::shared_ptr<SystemLogSink> sink);

    /// Blocks until everything logged so far has been written. Not for threads of the task pool.
    static void flush();
};

/// Writes records for one subsystem and category. Logging never blocks: a queue of its own feeds the sink. Thread-safe.
class TOVREL_EXPORT Logger {
public:
    Logger(std::string subsystem, std::string category);

    [[nodiscard]] bool isEnabled(OSLogType type) const;

    /// The message is data, never a format.
    void log(OSLogType type, std::string_view message) const;

    [[nodiscard]] const std::string& subsystem() const { return subsystem_; }
    [[nodiscard]] const std::string& category() const { return category_; }

private:
    std::string subsystem_;
    std::string category_;
};

} // namespace tovrel
