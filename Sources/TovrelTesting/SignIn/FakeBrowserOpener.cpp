#include <TovrelTesting/SignIn/FakeBrowserOpener.hpp>

#include <utility>

namespace tovrel::testing {

namespace {

Async<void> endWith(std::exception_ptr error) {
    if (error) {
        std::rethrow_exception(error);
    }
    co_return;
}

} // namespace

FakeBrowserOpener::FakeBrowserOpener() = default;

FakeBrowserOpener::~FakeBrowserOpener() = default;

std::shared_ptr<FakeBrowserOpener> FakeBrowserOpener::make() {
    return std::shared_ptr<FakeBrowserOpener>(new FakeBrowserOpener());
}

Async<void> FakeBrowserOpener::open(URL url) {
    const std::scoped_lock lock(mutex_);
    pages_.push_back(std::move(url));
    changed_.notify_all();
    return endWith(error_);
}

void FakeBrowserOpener::fail(std::exception_ptr error) {
    const std::scoped_lock lock(mutex_);
    error_ = std::move(error);
}

std::vector<URL> FakeBrowserOpener::pages() const {
    const std::scoped_lock lock(mutex_);
    return pages_;
}

std::vector<URL> FakeBrowserOpener::waitForPages(std::size_t count, std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, limit, [&] { return pages_.size() >= count; });
    return pages_;
}

} // namespace tovrel::testing
