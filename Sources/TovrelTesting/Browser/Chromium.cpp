#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelTesting/Browser/Chromium.hpp>
#include <TovrelTesting/Browser/Private/DevToolsConnection.hpp>

#include <fmt/format.h>

#include <thread>
#include <unistd.h>
#include <utility>

namespace tovrel::testing {

namespace {

constexpr std::chrono::milliseconds betweenLooks{20};

DevToolsConnection::Instant deadline() {
    return std::chrono::steady_clock::now() + Chromium::timeLimit;
}

/// A text as JSON, which is a text in JavaScript too.
std::string asJSON(std::string_view text) {
    return JSONEncoder().encode(std::string(text)).string();
}

/// The browser must reach the back end and this machine, and must not reach anything else.
std::string resolverRules(const LocalBackEnd& backEnd, const std::vector<std::string>& hosts) {
    std::string rules = "--host-resolver-rules=";
    for (const std::string& host : hosts) {
        rules += fmt::format("MAP {}:443 127.0.0.1:{},", host, backEnd.port());
    }
    return rules + "MAP * ~NOTFOUND,EXCLUDE 127.0.0.1";
}

std::vector<std::string> arguments(const LocalBackEnd& backEnd, const std::vector<std::string>& hosts,
                                   BrowserWindow window) {
    std::vector<std::string> list = {"chromium",
                                     "--remote-debugging-pipe",
                                     resolverRules(backEnd, hosts),
                                     "--ignore-certificate-errors-spki-list=" + backEnd.keyPin(),
                                     "--no-proxy-server",
                                     "--no-first-run",
                                     "--no-default-browser-check",
                                     "--disable-background-networking",
                                     "--disable-component-update",
                                     "--disable-default-apps",
                                     "--disable-dev-shm-usage",
                                     "--disable-extensions",
                                     "--disable-sync",
                                     "--password-store=basic"};
    if (window == BrowserWindow::headless) {
        list.insert(list.end(), {"--headless=new", "--disable-gpu"});
    }
    if (::geteuid() == 0) {
        // Its sandbox refuses to work for root.
        list.emplace_back("--no-sandbox");
    }
    return list;
}

} // namespace

Chromium::Chromium(std::unique_ptr<DevToolsConnection> connection) : connection_(std::move(connection)) {}

Chromium::~Chromium() = default;

std::unique_ptr<Chromium> Chromium::launch(const LocalBackEnd& backEnd, const std::vector<std::string>& hosts,
                                           BrowserWindow window) {
    auto connection = std::make_unique<DevToolsConnection>(arguments(backEnd, hosts, window));
    if (!connection->run("Browser.getVersion", "{}", "", deadline())) {
        throw ChromiumError::couldNotStart();
    }
    return std::unique_ptr<Chromium>(new Chromium(std::move(connection)));
}

void Chromium::open(const URL& page) {
    const auto created = connection_->run("Target.createTarget", R"({"url":"about:blank"})", "", deadline());
    target_ = created ? created->targetId.value_or("") : "";
    const auto attached = connection_->run(
        "Target.attachToTarget", fmt::format(R"({{"targetId":{},"flatten":true}})", asJSON(target_)), "", deadline());
    session_ = attached ? attached->sessionId.value_or("") : "";
    const std::string address = fmt::format(R"({{"url":{}}})", asJSON(page.absoluteString()));
    if (session_.empty() || !connection_->run("Page.navigate", address, session_, deadline())) {
        throw ChromiumError::refused("Page.navigate");
    }
}

void Chromium::click(std::string_view selector) {
    const std::string middle =
        fmt::format("(element => {{ if (!element || document.readyState !== 'complete') return ''; const box = "
                    "element.getBoundingClientRect(); return "
                    "'\"x\":' + (box.x + box.width / 2) + ',\"y\":' + (box.y + box.height / 2); }})"
                    "(document.querySelector({}))",
                    asJSON(selector));
    const auto end = deadline();
    std::string position;
    while ((position = evaluate(middle)).empty()) {
        if (std::chrono::steady_clock::now() > end) {
            throw ChromiumError::timedOut("the element " + std::string(selector));
        }
        std::this_thread::sleep_for(betweenLooks);
    }
    pressMouse("mousePressed", position);
    pressMouse("mouseReleased", position);
}

void Chromium::pressMouse(std::string_view event, const std::string& position) {
    const std::string parameters = fmt::format(R"({{"type":"{}",{},"button":"left","clickCount":1}})", event, position);
    static_cast<void>(connection_->run("Input.dispatchMouseEvent", parameters, session_, deadline()));
}

std::string Chromium::waitForText(std::string_view part) {
    const auto end = deadline();
    std::string shown;
    while ((shown = text()).find(part) == std::string::npos) {
        if (std::chrono::steady_clock::now() > end) {
            throw ChromiumError::timedOut("the text \"" + std::string(part) + "\"");
        }
        std::this_thread::sleep_for(betweenLooks);
    }
    return shown;
}

std::string Chromium::text() {
    return evaluate("document.readyState === 'complete' ? document.body.innerText : ''");
}

std::string Chromium::address() {
    return evaluate("location.href");
}

void Chromium::closeTab() {
    static_cast<void>(
        connection_->run("Target.closeTarget", fmt::format(R"({{"targetId":{}}})", asJSON(target_)), "", deadline()));
}

std::string Chromium::evaluate(const std::string& expression) {
    const auto result = connection_->run("Runtime.evaluate", fmt::format(R"({{"expression":{}}})", asJSON(expression)),
                                         session_, deadline());
    // Between two pages there is nothing to ask.
    return result && result->result ? result->result->value.value_or("") : "";
}

} // namespace tovrel::testing
