#pragma once

#include <Platform/System/Export.hpp>

#include <memory>

namespace tovrel {

/// A screen of the host's user interface. For the main thread only.
class TOVREL_EXPORT ViewController : public std::enable_shared_from_this<ViewController> {
public:
    virtual ~ViewController();
    ViewController(const ViewController&) = delete;
    ViewController& operator=(const ViewController&) = delete;

    /// The screen that this one has put in front of itself; null when there is none.
    [[nodiscard]] virtual std::shared_ptr<ViewController> presentedViewController() const = 0;

    /// The screen in front: the last one in the chain of presented screens that starts here, itself when it presents
    /// none.
    [[nodiscard]] std::shared_ptr<ViewController> topPresentedViewController();

protected:
    ViewController();
};

} // namespace tovrel
