#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheStore.hpp>
#include <Platform/URLLoading/Detail/TransferEngine.hpp>
#include <Platform/URLLoading/URLRequest.hpp>
#include <Platform/URLLoading/URLSession.hpp>

#include <memory>

namespace tovrel {

/// Loads a request through a cache, redirects one by one, as `decide` says.
///
/// @throws URLError
Async<URLSessionResult> loadThroughCache(std::shared_ptr<TransferEngine> engine, std::shared_ptr<CacheStore> store,
                                         URLRequest request);

} // namespace tovrel
