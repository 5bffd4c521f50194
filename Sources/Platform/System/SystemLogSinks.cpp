#include <Platform/System/SystemLogSinks.hpp>

#include <array>
#include <cstdio>
#include <string>
#include <sys/uio.h>
#include <syslog.h>
#include <systemd/sd-journal.h>
#include <unistd.h>

namespace tovrel::detail {

namespace {

constexpr const char* journalSocket = "/run/systemd/journal/socket";

int priority(OSLogType type) {
    switch (type) {
    case OSLogType::debug:
        return LOG_DEBUG;
    case OSLogType::info:
        return LOG_INFO;
    case OSLogType::default_:
        return LOG_NOTICE;
    case OSLogType::error:
        return LOG_ERR;
    case OSLogType::fault:
        return LOG_CRIT;
    }
    return LOG_NOTICE;
}

iovec field(const std::string& text) {
    return {const_cast<char*>(text.data()), text.size()};
}

class JournalSink final : public SystemLogSink {
public:
    void write(const SystemLogRecord& record) override {
        const std::string message = "MESSAGE=" + record.message;
        const std::string level = "PRIORITY=" + std::to_string(priority(record.type));
        const std::string subsystem = "SUBSYSTEM=" + record.subsystem;
        const std::string category = "CATEGORY=" + record.category;
        const std::array fields{field(message), field(level), field(subsystem), field(category)};
        sd_journal_sendv(fields.data(), static_cast<int>(fields.size()));
    }
};

class StandardErrorSink final : public SystemLogSink {
public:
    void write(const SystemLogRecord& record) override {
        std::fprintf(stderr, "%s [%s] %s\n", record.subsystem.c_str(), record.category.c_str(), record.message.c_str());
    }
};

} // namespace

std::shared_ptr<SystemLogSink> makeDefaultSystemLogSink() {
    if (access(journalSocket, W_OK) == 0) {
        return std::make_shared<JournalSink>();
    }
    return std::make_shared<StandardErrorSink>();
}

} // namespace tovrel::detail
