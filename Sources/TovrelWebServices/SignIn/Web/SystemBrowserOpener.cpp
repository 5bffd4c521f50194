#include <Platform/Concurrency/Task.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/SystemBrowserOpener.hpp>

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <csignal>
#include <fcntl.h>
#include <optional>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace tovrel {

namespace asio = boost::asio;

namespace {

/// What a new program is to find: no input, no output, no open files, the signals as they are by default.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDERR_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    ~SpawnSettings() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }

    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &actions_; }
    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &attributes_; }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

pid_t launch(std::string program, std::string argument) {
    const SpawnSettings settings;
    char* const arguments[] = {program.data(), argument.data(), nullptr};
    pid_t process = -1;
    if (::posix_spawnp(&process, program.c_str(), settings.actions(), settings.attributes(), arguments, environ) != 0) {
        throw AuthorizationError::couldNotOpenBrowser();
    }
    return process;
}

/// Waits for the process without a thread of its own, and says whether it succeeded.
Async<void> reap(pid_t process, std::shared_ptr<bool> hasSucceeded) {
    // By its number: the header of Debian 12 declares the function for C alone.
    const int descriptor = static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
    if (descriptor >= 0) {
        asio::posix::stream_descriptor watched(co_await asio::this_coro::executor, descriptor);
        const auto [error] =
            co_await watched.async_wait(asio::posix::stream_descriptor::wait_read, asio::as_tuple(asio::use_awaitable));
        if (error) {
            co_return;
        }
    }
    siginfo_t status{};
    const int result = ::waitid(P_PID, static_cast<id_t>(process), &status, WEXITED);
    // A host that ignores its children's ends leaves nothing to wait for.
    *hasSucceeded = result != 0 || (status.si_code == CLD_EXITED && status.si_status == 0);
}

Async<void> openWith(std::string program, std::string url) {
    const pid_t process = launch(std::move(program), std::move(url));
    auto hasSucceeded = std::make_shared<bool>(false);
    // Detached from the caller's cancellation, so that no process stays unburied.
    std::shared_ptr<Task> reaping = Task::spawn(TaskPool::compute(), reap(process, hasSucceeded));
    co_await Task::joinDetached(std::move(reaping));
    if (!*hasSucceeded) {
        throw AuthorizationError::couldNotOpenBrowser();
    }
}

} // namespace

BrowserOpener::BrowserOpener() = default;

BrowserOpener::~BrowserOpener() = default;

SystemBrowserOpener::SystemBrowserOpener(std::string program) : program_(std::move(program)) {}

SystemBrowserOpener::~SystemBrowserOpener() = default;

std::shared_ptr<SystemBrowserOpener> SystemBrowserOpener::make(std::string program) {
    return std::shared_ptr<SystemBrowserOpener>(new SystemBrowserOpener(std::move(program)));
}

Async<void> SystemBrowserOpener::open(URL url) {
    return openWith(program_, url.absoluteString());
}

} // namespace tovrel
