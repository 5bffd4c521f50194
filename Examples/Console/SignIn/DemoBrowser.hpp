#pragma once

#include <Platform/Concurrency/Event.hpp>
#include <TovrelTesting/Browser/Chromium.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>
#include <TovrelWebServices/SignIn/Web/BrowserOpener.hpp>

#include <atomic>
#include <memory>
#include <string>

/// A Chromium of the demo's own, with a new profile, that trusts the local back end and finds its hosts there; the
/// user's browser does neither. Where there is no display it has no window, and the demo clicks in the user's place.
class DemoBrowser final : public tovrel::BrowserOpener, public std::enable_shared_from_this<DemoBrowser> {
public:
    static std::shared_ptr<DemoBrowser> make(const tovrel::testing::LocalBackEnd& backEnd);
    ~DemoBrowser() override;

    /// Whether the user sees it.
    [[nodiscard]] static bool hasDisplay();

    /// Which button the demo clicks on the next page: "continue" or "cancel".
    void decide(std::string button);

    /// Tells what the browser has shown, once it has shown all of it. For after the sign-in.
    void report() const;

    [[nodiscard]] tovrel::Async<void> open(tovrel::URL url) override;

private:
    explicit DemoBrowser(const tovrel::testing::LocalBackEnd& backEnd);

    static tovrel::Async<void> show(std::shared_ptr<DemoBrowser> self, tovrel::URL url);
    void load(const tovrel::URL& url);
    void clickThrough();

    const tovrel::testing::LocalBackEnd& backEnd_;
    std::unique_ptr<tovrel::testing::Chromium> chromium_;
    std::atomic<bool> wasOpened_ = false;
    std::string button_;
    std::string question_;
    std::string answer_;
    std::shared_ptr<tovrel::Event> hasShown_;
};
