#pragma once

#include <Platform/System/RawRepresentable.hpp>
#include <QZFrameworkCoreLogic/TovrelLogger.hpp>

#include <array>
#include <functional>
#include <string_view>

namespace tovrel {

/// The categories of this library's log channel.
class TOVREL_EXPORT TovrelWebServicesLogCategory : public RawRepresentable<TovrelWebServicesLogCategory> {
public:
    enum Value { general };

    static constexpr std::array<std::string_view, 1> rawValues{"General"};

    /* implicit */ constexpr TovrelWebServicesLogCategory(Value value) : value_(value) {}
    [[nodiscard]] constexpr Value value() const { return value_; }

    friend constexpr bool operator==(TovrelWebServicesLogCategory a, TovrelWebServicesLogCategory b) {
        return a.value_ == b.value_;
    }

private:
    Value value_;
};

/// Emits one record per message, unless the system has the level disabled. Adds nothing to the message. Stateless.
class TOVREL_EXPORT TovrelWebServicesOSLogExecutor final : public TovrelLogExecutable {
public:
    TovrelWebServicesOSLogExecutor();
    ~TovrelWebServicesOSLogExecutor() override;

    void log(const Logger& logger, OSLogType level, std::string_view message) const override;
};

/// The loggers of the process.
class TOVREL_EXPORT TovrelLoggers {
public:
    TovrelLoggers() = delete;

    /// This library's logger: a snapshot, made on first use. Thread-safe.
    static TovrelLogger<TovrelWebServicesLogCategory> TWS();

    /// Hosts may put a logger of their own in its place. Thread-safe.
    static void setTWS(TovrelLogger<TovrelWebServicesLogCategory> logger);
};

} // namespace tovrel

template <>
struct std::hash<tovrel::TovrelWebServicesLogCategory> {
    std::size_t operator()(tovrel::TovrelWebServicesLogCategory category) const noexcept { return category.value(); }
};
