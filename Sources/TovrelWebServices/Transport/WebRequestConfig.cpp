#include <TovrelWebServices/Support/TovrelWebServicesLog.hpp>
#include <TovrelWebServices/Transport/WebRequestConfig.hpp>

#include <algorithm>
#include <mutex>
#include <string_view>
#include <utility>

namespace tovrel {

namespace {

struct State {
    std::mutex mutex;
    std::optional<std::string> userAgent;
};

State& state() {
    static State instance;
    return instance;
}

void logFailure(std::string_view message, int line) {
    TovrelLoggers::TWS().log(TovrelLogLevel::error, TovrelWebServicesLogCategory::general, message,
                             LogSite("WebRequestConfig", "setUserAgent(appIdentifier:bundle:platform:)", line));
}

char toUpper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

} // namespace

std::optional<std::string> WebRequestConfig::userAgent() {
    const std::scoped_lock lock(state().mutex);
    return state().userAgent;
}

void WebRequestConfig::setUserAgent(const TovrelAppIdentifier& appIdentifier, const Bundle& bundle,
                                    const std::optional<std::string>& platform) {
    const auto version = bundle.string("CFBundleShortVersionString");
    if (!version) {
        logFailure("Unable to fetch version from bundle", 12);
        return;
    }
    if (!platform) {
        logFailure("Unable to find platform", 18);
        return;
    }
    std::string userAgent = appIdentifier.appCode;
    std::transform(userAgent.begin(), userAgent.end(), userAgent.begin(), toUpper);
    userAgent += "/" + *version + " " + *platform;
    const std::scoped_lock lock(state().mutex);
    state().userAgent = std::move(userAgent);
}

} // namespace tovrel
