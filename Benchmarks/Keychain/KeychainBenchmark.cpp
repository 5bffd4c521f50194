#include <Platform/Concurrency/Start.hpp>
#include <QZFrameworkCoreLogic/Keychain.hpp>
#include <TovrelWebServices/Tovrel Accounts/KeychainTovrelAccountsStorage.hpp>

#include <fmt/core.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <Harness/Report.hpp>
#include <Keychain/KeychainBenchmark.hpp>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tovrel::benchmarks {

namespace {

namespace fs = std::filesystem;
using Backend = KeychainConfiguration::Backend;

constexpr unsigned rounds = 11;
constexpr int readsPerTurn = 2000;
constexpr double microseconds = 1e6;

TovrelAccountsClient client() {
    return TovrelAccountsClient("reader", "secret", TovrelAccountsRealm::tovrelstudios,
                                TovrelAccountsEnvironment::production(), {"content"});
}

/// As long as a real one.
TovrelAccountsToken token() {
    TovrelAccountsToken token;
    token.accessToken = std::string(1200, 'a');
    token.accessTokenExpiresIn = 300;
    token.refreshToken = std::string(700, 'r');
    token.refreshTokenExpiresIn = 1800;
    token.timestamp = 1732190000.5;
    token.idToken = std::string(900, 'i');
    token.tokenType = "Bearer";
    token.scope = "openid content";
    return token;
}

/// A directory that stands for a user's home and goes with this object.
class Home {
public:
    Home() {
        std::string name = (fs::temp_directory_path() / "tovrel-bench-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary directory");
        }
        path_ = name;
        for (const char* variable : {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME"}) {
            ::setenv(variable, name.c_str(), 1);
        }
    }
    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;
    ~Home() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    [[nodiscard]] const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

/// A bus with a keyring daemon, where both are installed.
class PrivateKeyring {
public:
    explicit PrivateKeyring(const Home& home) {
        const std::string address = "unix:path=" + (home.path() / "bus").string();
        std::ofstream(home.path() / "bus.conf")
            << "<busconfig><type>session</type><listen>" << address
            << "</listen><policy context=\"default\"><allow send_destination=\"*\"/><allow own=\"*\"/>"
               "<allow eavesdrop=\"true\"/></policy></busconfig>";
        bus_ = startProgram("dbus-daemon --nofork --config-file " + (home.path() / "bus.conf").string());
        ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
        while (!fs::exists(home.path() / "bus") && isRunning(bus_)) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        daemon_ =
            startProgram("printf password | exec gnome-keyring-daemon --foreground --unlock --components=secrets");
    }
    PrivateKeyring(const PrivateKeyring&) = delete;
    PrivateKeyring& operator=(const PrivateKeyring&) = delete;
    ~PrivateKeyring() {
        for (const pid_t process : {daemon_, bus_}) {
            ::kill(-process, SIGKILL);
            ::waitpid(process, nullptr, 0);
        }
    }

    /// Waits until the daemon answers, or has failed to.
    [[nodiscard]] bool isUsable(const KeychainConfiguration& configuration) const {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (std::chrono::steady_clock::now() < end) {
            try {
                get(Keychain(configuration).setString("probe", "value", KeychainAccessibility::whenUnlocked));
                return true;
            } catch (const KeychainError&) {
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            }
        }
        return false;
    }

private:
    static pid_t startProgram(const std::string& command) {
        const pid_t process = ::fork();
        if (process == 0) {
            ::setpgid(0, 0);
            ::execl("/bin/sh", "sh", "-c", (command + " 2>/dev/null >/dev/null").c_str(), nullptr);
            ::_exit(127);
        }
        return process;
    }

    static bool isRunning(pid_t process) { return ::waitpid(process, nullptr, WNOHANG) == 0; }

    pid_t bus_;
    pid_t daemon_;
};

KeychainConfiguration configurationOf(Backend backend, const Home& home) {
    KeychainConfiguration configuration;
    configuration.serviceName = "tovrel-benchmark";
    configuration.backend = backend;
    configuration.directory = home.path() / "keychain";
    return configuration;
}

Async<void> readOften(std::shared_ptr<KeychainTovrelAccountsStorage> storage) {
    const TovrelAccountsClient reader = client();
    for (int index = 0; index < readsPerTurn; ++index) {
        const std::optional<TovrelAccountsToken> found = co_await storage->token(reader);
        if (!found) {
            throw std::runtime_error("the token is gone");
        }
    }
}

Async<void> readBytesOften(Keychain keychain, std::string key) {
    for (int index = 0; index < readsPerTurn; ++index) {
        const std::optional<Data> found = co_await keychain.data(key);
        if (!found) {
            throw std::runtime_error("the entry is gone");
        }
    }
}

double millisecondsOf(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// What the first operations of a process cost, which meet no connection and no memory.
void printFirstOperations(const char* name, const KeychainConfiguration& configuration) {
    const auto storage = KeychainTovrelAccountsStorage::make(Keychain(configuration));
    const double first = millisecondsOf([&] { get(storage->token(client())); });
    const double write = millisecondsOf([&] { get(storage->setToken(client(), token())); });
    fmt::print("{:<34}{:>12.2f}{:>12.2f}\n", name, first, write);
}

} // namespace

void measureKeychain() {
    const Home home;
    const PrivateKeyring keyring(home);
    std::vector<std::pair<std::string, Backend>> backends{{"memory", Backend::memory},
                                                          {"sealed store", Backend::sealedStore}};
    const bool hasKeyring = keyring.isUsable(configurationOf(Backend::secretService, home));
    if (hasKeyring) {
        backends.emplace_back("Secret Service", Backend::secretService);
    }

    fmt::print("\nfirst operations, elapsed ms{:>18}{:>12}  target of a first read: <= 30 ms\n", "read", "write");
    for (const auto& [name, backend] : backends) {
        printFirstOperations(name.c_str(), configurationOf(backend, home));
    }

    std::vector<Contender> contenders;
    for (const auto& [name, backend] : backends) {
        const Keychain keychain(configurationOf(backend, home));
        const auto storage = KeychainTovrelAccountsStorage::make(keychain);
        get(storage->setToken(client(), token()));
        contenders.emplace_back("token, " + name + " (<= 20 us)", [storage] { get(readOften(storage)); });
    }
    for (const auto& [name, backend] : backends) {
        const Keychain keychain(configurationOf(backend, home));
        get(keychain.setString("key", std::string(3000, 'v'), KeychainAccessibility::afterFirstUnlock));
        contenders.emplace_back("bytes, " + name, [keychain] { get(readBytesOften(keychain, "key")); });
    }
    if (!hasKeyring) {
        contenders.push_back(Contender::absent("token, Secret Service", "no dbus-daemon or gnome-keyring-daemon"));
    }

    Report report("reading an entry that nobody changes", Ratio::cost);
    report.columns = {
        Column("us CPU", [](const Measurement& row) { return fmt::format("{:.2f}", row.cpuSeconds * microseconds); }),
        Column("allocations", [](const Measurement& row) { return fmt::format("{:.1f}", row.allocations); }),
        Column("noise", [](const Measurement& row) { return fmt::format("{:.0f} %", row.noise * 100); })};
    report.print(measure(contenders, rounds, readsPerTurn));
}

} // namespace tovrel::benchmarks
