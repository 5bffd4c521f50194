#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/SignIn/Web/BrowserOpener.hpp>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <memory>
#include <mutex>
#include <vector>

namespace tovrel::testing {

/// Opens no browser and remembers the pages, so that a test can load them as it likes. Thread-safe.
class TOVREL_EXPORT FakeBrowserOpener final : public BrowserOpener {
public:
    static std::shared_ptr<FakeBrowserOpener> make();
    ~FakeBrowserOpener() override;

    /// Opening ends at once, with the failure if there is one.
    [[nodiscard]] Async<void> open(URL url) override;

    /// Lets opening fail from now on.
    void fail(std::exception_ptr error);

    template <class E>
    void fail(const E& error) {
        fail(std::make_exception_ptr(error));
    }

    /// The pages so far, in order.
    [[nodiscard]] std::vector<URL> pages() const;

    /// Blocks until there are that many pages and returns all there are, after the limit perhaps fewer.
    [[nodiscard]] std::vector<URL> waitForPages(std::size_t count,
                                                std::chrono::milliseconds limit = std::chrono::seconds(10)) const;

private:
    FakeBrowserOpener();

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::vector<URL> pages_;
    std::exception_ptr error_;
};

} // namespace tovrel::testing
