#pragma once

#include <TovrelWebServices/Transport/URLSessionProvider.hpp>

#include <memory>
#include <mutex>

namespace tovrel {

/// Owns one session at a time. A replaced session finishes the requests that run on it. Thread-safe.
class TOVREL_EXPORT TovrelURLSessionProvider final : public URLSessionProvider {
public:
    /// The provider of the process, made on first use with the default configuration.
    static std::shared_ptr<TovrelURLSessionProvider> default_();

    /// @param configuration What this session and every later one is made from.
    static std::shared_ptr<TovrelURLSessionProvider>
    make(URLSessionConfiguration configuration = URLSessionConfiguration());
    ~TovrelURLSessionProvider() override;

    [[nodiscard]] std::shared_ptr<URLSession> session() const override;

    /// Replaces the session, also by one for an equal definition. Sessions keep no responses yet: the sizes are
    /// checked, and one that is no number of bytes stops the process.
    void updateCache(const WebRequestCacheDefinition& definition) override;

private:
    explicit TovrelURLSessionProvider(URLSessionConfiguration configuration);

    const URLSessionConfiguration configuration_;
    std::mutex lock_;             // serialises updates
    mutable std::mutex snapshot_; // held for a copy or a swap of the pointer, never for an update
    std::shared_ptr<URLSession> session_;
};

} // namespace tovrel
