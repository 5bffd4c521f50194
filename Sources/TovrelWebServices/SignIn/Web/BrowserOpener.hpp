#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URL.hpp>

namespace tovrel {

/// Shows a page to the user in a browser. Implementations are thread-safe.
class TOVREL_EXPORT BrowserOpener {
public:
    virtual ~BrowserOpener();
    BrowserOpener(const BrowserOpener&) = delete;
    BrowserOpener& operator=(const BrowserOpener&) = delete;

    /// Opens the page. May last as long as the browser does, but must not block its thread; a cancellation ends the
    /// wait and closes no browser.
    ///
    /// @throws AuthorizationError couldNotOpenBrowser, or an error of the implementation's own.
    [[nodiscard]] virtual Async<void> open(URL url) = 0;

protected:
    BrowserOpener();
};

} // namespace tovrel
