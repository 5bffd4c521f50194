#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/URLLoading/Detail/TransferEngine.hpp>
#include <Platform/URLLoading/URLRequest.hpp>
#include <Platform/URLLoading/URLSession.hpp>

#include <memory>

namespace tovrel {

/// Runs a transfer on the engine; may be awaited from any executor. A cancellation makes it fail as cancelled.
///
/// @throws URLError
Async<URLSessionResult> transfer(std::shared_ptr<TransferEngine> engine, URLRequest request, TransferOptions options);

} // namespace tovrel
