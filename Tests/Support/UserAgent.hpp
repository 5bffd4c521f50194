#pragma once

#include <Platform/System/Bundle.hpp>
#include <TovrelContracts/TovrelAppIdentifier.hpp>
#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>
#include <TovrelWebServices/Transport/WebRequestConfig.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::tests {

inline Bundle versionedBundle(std::string version) {
    return Bundle(Bundle::InfoDictionary{{"CFBundleShortVersionString", std::move(version)}});
}

/// The process-wide user agent cannot be taken back, so all tests use this one.
inline void setUserAgentForTests() {
    WebRequestConfig::setUserAgent(TovrelAppIdentifier("wx"), versionedBundle("5.2.1"), "iOS");
}

/// What the library logs while `action` runs: "file:line message" of each.
template <class Action>
std::vector<std::string> captureLog(Action&& action) {
    class Capture final : public TovrelLogWriter {
    public:
        std::vector<std::string> messages;

        void write(TovrelLogLevel, std::string_view, std::string_view message, const LogSite& site) override {
            messages.push_back(std::string(site.file) + ":" + std::to_string(site.line) + " " + std::string(message));
        }
    };
    const auto capture = std::make_shared<Capture>();
    const auto original = TovrelLoggers::TWS();
    TovrelLoggers::setTWS(TovrelLogger<TovrelWebServicesLogCategory>(capture, TovrelLogLevel::verbose, true));
    std::forward<Action>(action)();
    TovrelLoggers::setTWS(original);
    return capture->messages;
}

} // namespace tovrel::tests
