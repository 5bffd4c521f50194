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
    return session_.load();
}

void TovrelURLSessionProvider::updateCache(const WebRequestCacheDefinition& definition) {
    // Sessions keep no responses yet; a size that is none fails here all the same.
    static_cast<void>(definition.memory.bytes());
    static_cast<void>(definition.disk.bytes());
    const std::scoped_lock lock(lock_);
    session_.store(URLSession::make(configuration_));
}

} // namespace tovrel
