#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelTesting/Browser/ChromiumError.hpp>
#include <TovrelTesting/Browser/Private/DevToolsConnection.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace tovrel::testing {

namespace {

// Where the browser expects the two pipes.
constexpr int commandDescriptor = 3;
constexpr int resultDescriptor = 4;

struct Message {
    std::optional<std::int64_t> identifier;
    std::optional<DevToolsResult> result;

    Message() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Message::identifier, "id">{}, Field<&Message::result, "result">{}};
    }
};

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;
};

/// Both ends above the descriptors that the browser gets, so that duplicating one does not close another.
Pipe openPipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw ChromiumError::couldNotStart();
    }
    Pipe pipe;
    pipe.readEnd = ::fcntl(ends[0], F_DUPFD_CLOEXEC, 16);
    pipe.writeEnd = ::fcntl(ends[1], F_DUPFD_CLOEXEC, 16);
    ::close(ends[0]);
    ::close(ends[1]);
    return pipe;
}

std::vector<std::string> environmentWith(const std::string& directory) {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        if (!text.starts_with("HOME=") && !text.starts_with("XDG_C") && !text.starts_with("LD_PRELOAD=")) {
            variables.emplace_back(text);
        }
    }
    variables.push_back("HOME=" + directory);
    return variables;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

pid_t launch(std::vector<std::string> arguments, const std::string& directory, int commands, int results) {
    std::vector<std::string> variables = environmentWith(directory);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, STDERR_FILENO);
    posix_spawn_file_actions_adddup2(&actions, commands, commandDescriptor);
    posix_spawn_file_actions_adddup2(&actions, results, resultDescriptor);
    posix_spawn_file_actions_addclosefrom_np(&actions, resultDescriptor + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    pid_t process = -1;
    const int error = ::posix_spawnp(&process, arguments.front().c_str(), &actions, &attributes,
                                     pointersTo(arguments).data(), pointersTo(variables).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? process : -1;
}

/// Waits for the descriptor; false after the deadline.
bool isReady(int descriptor, short events, DevToolsConnection::Instant deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    pollfd polled{descriptor, events, 0};
    return ::poll(&polled, 1, static_cast<int>(std::max<long>(left, 0))) > 0;
}

} // namespace

DevToolsConnection::DevToolsConnection(std::vector<std::string> arguments) {
    arguments.push_back("--user-data-dir=" + (directory_.path() / "profile").string());
    const Pipe commands = openPipe();
    const Pipe results = openPipe();
    process_ = launch(std::move(arguments), directory_.path().string(), commands.readEnd, results.writeEnd);
    ::close(commands.readEnd);
    ::close(results.writeEnd);
    toBrowser_ = commands.writeEnd;
    fromBrowser_ = results.readEnd;
    if (process_ < 0) {
        ::close(toBrowser_);
        ::close(fromBrowser_);
        throw ChromiumError::couldNotStart();
    }
}

DevToolsConnection::~DevToolsConnection() {
    const auto now = std::chrono::steady_clock::now();
    try {
        static_cast<void>(run("Browser.close", "{}", "", now + std::chrono::seconds(5)));
    } catch (const ChromiumError&) {
        // It is gone, or has to be made to go.
    }
    ::close(toBrowser_);
    ::close(fromBrowser_);
    const bool hasEnded = endsBefore(now + std::chrono::seconds(5));
    ::kill(-process_, SIGKILL); // its helpers
    if (!hasEnded) {
        ::waitpid(process_, nullptr, 0);
    }
}

std::optional<DevToolsResult> DevToolsConnection::run(const std::string& method, const std::string& parameters,
                                                      const std::string& session, Instant deadline) {
    const std::int64_t identifier = ++lastIdentifier_;
    const std::string sessionField = session.empty() ? "" : fmt::format(R"("sessionId":"{}",)", session);
    send(fmt::format(R"({{"id":{},{}"method":"{}","params":{}}})", identifier, sessionField, method, parameters),
         deadline);
    while (true) {
        const std::string text = receive(deadline);
        try {
            auto message = JSONDecoder().decode<Message>(Data(text));
            if (message.identifier == identifier) {
                return std::move(message.result);
            }
        } catch (const DecodingError&) {
            // An event, whose members may be of any type.
        }
    }
}

void DevToolsConnection::send(const std::string& message, Instant deadline) {
    std::string_view rest(message.c_str(), message.size() + 1);
    while (!rest.empty()) {
        if (!isReady(toBrowser_, POLLOUT, deadline)) {
            throw ChromiumError::timedOut("taking a command");
        }
        const ssize_t count = ::write(toBrowser_, rest.data(), std::min<std::size_t>(rest.size(), PIPE_BUF));
        if (count <= 0) {
            throw ChromiumError::ended();
        }
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::string DevToolsConnection::receive(Instant deadline) {
    std::size_t end = std::string::npos;
    while ((end = received_.find('\0')) == std::string::npos) {
        std::array<char, 65536> chunk;
        if (!isReady(fromBrowser_, POLLIN, deadline)) {
            throw ChromiumError::timedOut("the result of a command");
        }
        const ssize_t count = ::read(fromBrowser_, chunk.data(), chunk.size());
        if (count <= 0) {
            throw ChromiumError::ended();
        }
        received_.append(chunk.data(), static_cast<std::size_t>(count));
    }
    std::string message = received_.substr(0, end);
    received_.erase(0, end + 1);
    return message;
}

bool DevToolsConnection::endsBefore(Instant deadline) const {
    while (::waitpid(process_, nullptr, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

} // namespace tovrel::testing
