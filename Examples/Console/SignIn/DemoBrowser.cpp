#include "DemoBrowser.hpp"

#include "../Journal.hpp"

#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/Start.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <TovrelTesting/LocalDeployment.hpp>

#include <cstdlib>
#include <sstream>
#include <utility>

using namespace tovrel;
using tovrel::testing::BrowserWindow;
using tovrel::testing::Chromium;
using tovrel::testing::LocalBackEnd;
using tovrel::testing::LocalDeployment;

namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

void printPage(std::string_view where, const std::string& text) {
    journal::line(where);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty()) {
            journal::line("  | " + line);
        }
    }
}

} // namespace

DemoBrowser::DemoBrowser(const LocalBackEnd& backEnd) : backEnd_(backEnd) {}

DemoBrowser::~DemoBrowser() = default;

std::shared_ptr<DemoBrowser> DemoBrowser::make(const LocalBackEnd& backEnd) {
    return std::shared_ptr<DemoBrowser>(new DemoBrowser(backEnd));
}

bool DemoBrowser::hasDisplay() {
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY");
}

void DemoBrowser::decide(std::string button) {
    button_ = std::move(button);
    wasOpened_ = false;
    hasShown_ = Event::make();
}

void DemoBrowser::report() const {
    if (!wasOpened_) {
        return;
    }
    get(Event::wait(hasShown_));
    if (!question_.empty()) {
        printPage("the page at " + LocalDeployment::identityHosts().front() + " said:", question_);
        journal::line("clicked \"" + button_ + "\"");
        printPage("the page at the application's port said:", answer_);
    }
}

Async<void> DemoBrowser::open(URL url) {
    wasOpened_ = true;
    return hop(TaskPool::blocking(), show(shared_from_this(), std::move(url)));
}

Async<void> DemoBrowser::show(std::shared_ptr<DemoBrowser> self, URL url) {
    std::exception_ptr failure;
    try {
        self->load(url);
        if (!hasDisplay()) {
            self->clickThrough();
        }
    } catch (...) {
        failure = std::current_exception();
    }
    self->hasShown_->set();
    if (failure) {
        std::rethrow_exception(failure);
    }
    co_return;
}

void DemoBrowser::load(const URL& url) {
    if (chromium_) {
        try {
            chromium_->open(url);
            return;
        } catch (const tovrel::testing::ChromiumError&) {
            chromium_.reset(); // the user has closed it
        }
    }
    chromium_ =
        Chromium::launch(backEnd_, {LocalDeployment::accountsHosts().back(), LocalDeployment::identityHosts().front()},
                         hasDisplay() ? BrowserWindow::visible : BrowserWindow::headless);
    chromium_->open(url);
}

void DemoBrowser::clickThrough() {
    question_ = chromium_->waitForText("Sign in to");
    chromium_->click("#" + button_);
    answer_ = chromium_->waitForText("return to the application");
}
