#pragma once

#include <Platform/Concurrency/Clock.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/GLib.hpp>

#include <functional>

namespace tovrel::detail {

/// What starts an asynchronous call of GLib; the callback and its argument go where the function takes them.
using GLibStart = std::function<void(GCancellable*, GAsyncReadyCallback, gpointer)>;

/// Where GLib delivers what belongs to objects made in its calls. One thread at a time may use it.
class GLibContext {
public:
    GLibContext() : context_(g_main_context_new()) {}
    GLibContext(const GLibContext&) = delete;
    GLibContext& operator=(const GLibContext&) = delete;
    /// Objects that have gone leave their last business here.
    ~GLibContext() { drain(); }

    /// Runs an asynchronous call to its end on the calling thread, which it blocks, and gives its result. At the
    /// deadline the call is cancelled, which is a result as well. GLib's blocking calls of this kind have no time
    /// limit.
    [[nodiscard]] GObjectPointer<GAsyncResult> wait(const GLibStart& start, Clock::Instant deadline) const;

    /// Delivers what has come in since; without that it would pile up.
    void drain() const;

private:
    GLibPointer<GMainContext> context_;
};

} // namespace tovrel::detail
