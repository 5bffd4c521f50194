#include <TovrelWebServices/Transport/TovrelURLSessionProvider.hpp>

#include <utility>

namespace tovrel {

std::shared_ptr<TovrelURLSessionProvider> TovrelURLSessionProvider::default_() {
    static const std::shared_ptr<TovrelURLSessionProvider> provider = make();
    return provider;
}

std::shared_ptr<TovrelURLSessionProvider> TovrelURLSessionProvider::make(URLSessionConfiguration configuration) {
    return std::shared_ptr<TovrelURLSessionProvider>(new TovrelURLSessionProvider(std::move(configuration)));
}

TovrelURLSessionProvider::TovrelURLSessionProvider(URLSessionConfiguration configuration)
    : configuration_(std::move(configuration)), session_(URLSession::make(configuration_)) {}

TovrelURLSessionProvider::~TovrelURLSessionProvider() = default;

std::shared_ptr<URLSession> TovrelURLSessionProvider::session() const {
    const std::scoped_lock lock(snapshot_);
    return session_;
}

void TovrelURLSessionProvider::updateCache(const WebRequestCacheDefinition& definition) {
    // Sessions keep no responses yet; a size that is none fails here all the same.
    static_cast<void>(definition.memory.bytes());
    static_cast<void>(definition.disk.bytes());
    const std::scoped_lock lock(lock_);
    std::shared_ptr<URLSession> session = URLSession::make(configuration_);
    const std::scoped_lock snapshotLock(snapshot_);
    session_.swap(session);
}

} // namespace tovrel
