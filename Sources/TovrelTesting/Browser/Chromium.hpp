#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URL.hpp>
#include <TovrelTesting/Browser/ChromiumError.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::testing {

class DevToolsConnection;

/// Whether a browser shows itself.
enum class BrowserWindow { headless, visible };

/// A real browser for tests: Chromium with a profile of its own that goes with it. It finds the given hosts at a local
/// back end, whose key it trusts, this machine by its address, and nothing else.
///
/// It is driven through DevTools, and clicks as a user does. One thread at a time may use it; every member blocks.
class TOVREL_EXPORT Chromium {
public:
    /// How long anything may take.
    static constexpr std::chrono::seconds timeLimit{30};

    /// Throws `ChromiumError` and `std::filesystem::filesystem_error`.
    static std::unique_ptr<Chromium> launch(const LocalBackEnd& backEnd, const std::vector<std::string>& hosts,
                                            BrowserWindow window = BrowserWindow::headless);

    /// Ends the browser and waits for it.
    ~Chromium();
    Chromium(const Chromium&) = delete;
    Chromium& operator=(const Chromium&) = delete;

    /// Loads a page in a new tab, which the other members are about from now on.
    void open(const URL& page);

    /// Waits until the page is loaded and has the element that the CSS selector stands for, and clicks it with the
    /// mouse.
    void click(std::string_view selector);

    /// Waits until the page's visible text contains this, and returns all of it.
    std::string waitForText(std::string_view part);

    /// The page's visible text now; empty while it is loading.
    std::string text();

    /// The address of the page.
    std::string address();

    /// Closes the tab.
    void closeTab();

private:
    explicit Chromium(std::unique_ptr<DevToolsConnection> connection);

    std::string evaluate(const std::string& expression);
    void pressMouse(std::string_view event, const std::string& position);

    std::unique_ptr<DevToolsConnection> connection_;
    std::string target_;
    std::string session_;
};

} // namespace tovrel::testing
