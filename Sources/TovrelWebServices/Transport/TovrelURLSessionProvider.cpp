#include <Platform/URLLoading/URLCache.hpp>
#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tovrel {

namespace {

std::uint64_t capacity(const WebRequestCacheSize& size) {
    return static_cast<std::uint64_t>(std::max<std::int64_t>(size.bytes(), 0));
}

} // namespace

std::shared_ptr<TovrelURLSessionProvider> TovrelURLSessionProvider::default_() {
    static const std::shared_ptr<TovrelURLSessionProvider> provider = make();
    return provider;
}

std::shared_ptr<TovrelURLSessionProvider> TovrelURLSessionProvider::make(URLSessionConfiguration configuration) {
    return std::shared_ptr<TovrelURLSessionProvider>(new TovrelURLSessionProvider(std::move(configuration)));
}

TovrelURLSessionProvider::TovrelURLSessionProvider(URLSessionConfiguration configuration)
    : configuration_(std::move(configuration)), session_(makeSession(WebRequestCacheDefinition::default_())) {}

TovrelURLSessionProvider::~TovrelURLSessionProvider() = default;

std::shared_ptr<URLSession> TovrelURLSessionProvider::session() const {
    const std::scoped_lock lock(snapshot_);
    return session_;
}

void TovrelURLSessionProvider::updateCache(const WebRequestCacheDefinition& definition) {
    const std::scoped_lock lock(lock_);
    std::shared_ptr<URLSession> session = makeSession(definition);
    const std::scoped_lock snapshotLock(snapshot_);
    session_.swap(session);
}

std::shared_ptr<URLSession> TovrelURLSessionProvider::makeSession(const WebRequestCacheDefinition& definition) const {
    URLSessionConfiguration configuration = configuration_;
    configuration.urlCache =
        URLCache::make(capacity(definition.memory), capacity(definition.disk), configuration.cacheDirectory);
    return URLSession::make(std::move(configuration));
}

} // namespace tovrel
