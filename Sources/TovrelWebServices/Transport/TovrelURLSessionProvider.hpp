#pragma once

#include <TovrelWebServices/Transport/URLSessionProvider.hpp>

#include <memory>
#include <mutex>

namespace tovrel {

/// Owns one session at a time, with a response cache in memory and on disk. A replaced session finishes the requests
/// that run on it. Thread-safe.
class TOVREL_EXPORT TovrelURLSessionProvider final : public URLSessionProvider {
public:
    /// The provider of the process, made on first use with the default configuration.
    static std::shared_ptr<TovrelURLSessionProvider> default_();

    /// The first session's cache has the sizes of `WebRequestCacheDefinition::default_()`.
    ///
    /// @param configuration What this session and every later one is made from, but for `urlCache`, which the provider
    /// makes itself, in `cacheDirectory`.
    static std::shared_ptr<TovrelURLSessionProvider>
    make(URLSessionConfiguration configuration = URLSessionConfiguration());
    ~TovrelURLSessionProvider() override;

    [[nodiscard]] std::shared_ptr<URLSession> session() const override;

    /// Replaces the session, also by one for an equal definition. What is stored in the directory stays as far as it
    /// fits; the new sizes are also those of other caches of the directory. A size that is no number of bytes stops the
    /// process, a negative one is zero.
    void updateCache(const WebRequestCacheDefinition& definition) override;

private:
    explicit TovrelURLSessionProvider(URLSessionConfiguration configuration);

    std::shared_ptr<URLSession> makeSession(const WebRequestCacheDefinition& definition) const;

    const URLSessionConfiguration configuration_;
    std::mutex lock_;             // serialises updates
    mutable std::mutex snapshot_; // held for a copy or a swap of the pointer, never for an update
    std::shared_ptr<URLSession> session_;
};

} // namespace tovrel
