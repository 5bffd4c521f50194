#include <chrono>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <Support/PrivateSession.hpp>
#include <thread>

namespace tovrel::tests {

namespace {

constexpr const char* password = "password of the login keyring";
constexpr const char* loginCollection = "/org/freedesktop/secrets/collection/login";

constexpr const char* keyringService = "org.freedesktop.secrets";

/// What a method answers; empty if it fails.
std::string call(const std::string& destination, const std::string& path, const std::string& method,
                 const std::string& argument) {
    const auto [output, isGood] = ChildProgram({"gdbus", "call", "--session", "--timeout", "5", "--dest", destination,
                                                "--object-path", path, "--method", method, argument})
                                      .finish();
    return isGood ? output : std::string();
}

/// What a method of the keyring service answers; empty if it fails.
std::string callService(const std::string& method, const std::string& argument) {
    return call(keyringService, "/org/freedesktop/secrets", "org.freedesktop.Secret.Service." + method, argument);
}

/// Whether a daemon serves already. Unlike a call of the service this makes the bus start none, which would come before
/// the unlocked one.
bool isServed() {
    return call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.NameHasOwner", keyringService)
               .find("true") != std::string::npos;
}

bool isUnlockedKeyringReady() {
    return isServed() && callService("ReadAlias", "default").find(loginCollection) != std::string::npos;
}

} // namespace

PrivateSession::PrivateSession(Activation activation) {
    setVariable("HOME", directory_.path().string());
    setVariable("XDG_RUNTIME_DIR", directory_.path().string());
    setVariable("XDG_DATA_HOME", (directory_.path() / "data").string());
    setVariable("XDG_CONFIG_HOME", (directory_.path() / "config").string());
    setVariable("XDG_CACHE_HOME", (directory_.path() / "cache").string());
    bus_ = std::make_unique<ChildProgram>(std::vector<std::string>{
        "dbus-daemon", "--nofork", "--print-address", "--config-file", writeBusConfiguration(activation).string()});
    setVariable("DBUS_SESSION_BUS_ADDRESS", bus_->readLine());
}

PrivateSession::~PrivateSession() {
    for (auto variable = previous_.rbegin(); variable != previous_.rend(); ++variable) {
        if (variable->second) {
            ::setenv(variable->first.c_str(), variable->second->c_str(), 1);
        } else {
            ::unsetenv(variable->first.c_str());
        }
    }
}

void PrivateSession::startKeyring() {
    keyring_ = std::make_unique<ChildProgram>(
        std::vector<std::string>{"gnome-keyring-daemon", "--foreground", "--unlock", "--components=secrets"}, password);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!isUnlockedKeyringReady()) {
        if (std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("the keyring daemon does not answer");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void PrivateSession::killKeyring() {
    keyring_->kill();
}

void PrivateSession::lockKeyring() const {
    if (callService("Lock", std::string("['") + loginCollection + "']").empty()) {
        throw std::runtime_error("could not lock the keyring");
    }
}

void PrivateSession::unlockKeyring() {
    killKeyring();
    startKeyring();
}

void PrivateSession::killBus() {
    bus_->kill();
}

std::filesystem::path PrivateSession::writeBusConfiguration(Activation activation) const {
    const std::filesystem::path path = directory_.path() / "bus.conf";
    const std::filesystem::path services = directory_.path() / "services";
    std::filesystem::create_directory(services);
    if (activation == Activation::keyring) {
        std::ofstream(services / "org.freedesktop.secrets.service")
            << "[D-BUS Service]\nName=org.freedesktop.secrets\n"
               "Exec=/usr/bin/gnome-keyring-daemon --start --foreground --components=secrets\n";
    }
    std::ofstream(path) << "<busconfig><type>session</type><listen>unix:dir=" << directory_.path().string()
                        << "</listen><servicedir>" << services.string()
                        << "</servicedir><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
    return path;
}

void PrivateSession::setVariable(const std::string& name, const std::string& value) {
    const char* previous = std::getenv(name.c_str());
    previous_.emplace_back(name, previous != nullptr ? std::optional<std::string>(previous) : std::nullopt);
    ::setenv(name.c_str(), value.c_str(), 1);
}

} // namespace tovrel::tests
