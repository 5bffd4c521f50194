#pragma once

#include <Platform/URLLoading/HTTPHeaders.hpp>

#include <optional>
#include <string>
#include <vector>

namespace tovrel {

/// The directives of Cache-Control that a private cache heeds (RFC 9111, section 5.2), of a request or of a response.
///
/// What cannot be read is taken the safe way: a lifetime that is no number of seconds is zero, of two the shorter one
/// counts, and a field whose end is unclear forbids to store or to use anything.
struct CacheControl {
    /// Nobody can tell where the directives end. `noStore` and `noCache` are set too.
    bool isMalformed = false;
    bool noStore = false;
    /// Without field names, or with names that cannot be told.
    bool noCache = false;
    bool mustRevalidate = false;
    bool mustUnderstand = false;
    bool onlyIfCached = false;
    /// RFC 8246.
    bool isImmutable = false;
    bool isPublic = false;
    bool isPrivate = false;

    // In seconds.
    std::optional<double> maxAge;
    /// Infinite where it cannot be read: nothing is fresh for long enough.
    std::optional<double> minFresh;
    /// Infinite where it has no value: a response of any age will do.
    std::optional<double> maxStale;
    /// RFC 5861, section 4.
    std::optional<double> staleIfError;

    /// The fields that `no-cache` names, in lower case: they are not used without validation, the rest is.
    std::vector<std::string> noCacheFields;

    explicit CacheControl(const HTTPHeaders& headers);

    /// For requests, where "Pragma: no-cache" counts as long as there is no Cache-Control (RFC 9111, section 5.4).
    static CacheControl ofRequest(const HTTPHeaders& headers);

private:
    void read(std::string_view directive);
};

} // namespace tovrel
