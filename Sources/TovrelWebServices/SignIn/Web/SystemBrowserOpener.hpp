#pragma once

#include <TovrelWebServices/SignIn/Web/BrowserOpener.hpp>

#include <memory>
#include <string>

namespace tovrel {

/// Leaves it to the desktop which browser to use: it runs a program with the address as its only argument. The program
/// gets no terminal and no open files of this process.
class TOVREL_EXPORT SystemBrowserOpener final : public BrowserOpener {
public:
    /// @param program A path, or a name that is looked for in PATH.
    static std::shared_ptr<SystemBrowserOpener> make(std::string program = "xdg-open");
    ~SystemBrowserOpener() override;

    /// Ends with the program.
    ///
    /// @throws AuthorizationError couldNotOpenBrowser when there is no such program or it fails.
    [[nodiscard]] Async<void> open(URL url) override;

private:
    explicit SystemBrowserOpener(std::string program);

    const std::string program_;
};

} // namespace tovrel
