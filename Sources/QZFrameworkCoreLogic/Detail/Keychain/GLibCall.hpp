#pragma once

#include <Platform/Concurrency/Clock.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/GLib.hpp>

#include <functional>

namespace tovrel::detail {

/// What starts an asynchronous call of GLib; the callback and its argument go where the function takes them.
using GLibStart = std::function<void(GCancellable*, GAsyncReadyCallback, gpointer)>;

/// Runs an asynchronous call to its end on the calling thread, which it blocks, and gives its result. At the deadline
/// the call is cancelled, which is a result as well.
///
/// GLib's blocking calls of this kind have no time limit.
GObjectPointer<GAsyncResult> waitForCall(const GLibStart& start, Clock::Instant deadline);

} // namespace tovrel::detail
