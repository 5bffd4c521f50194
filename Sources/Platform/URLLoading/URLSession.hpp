#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URLRequest.hpp>
#include <Platform/URLLoading/URLResponse.hpp>
#include <Platform/URLLoading/URLSessionConfiguration.hpp>

#include <memory>
#include <optional>

namespace tovrel {

/// A loaded body and the response it came with.
struct TOVREL_EXPORT URLSessionResult {
    /// Absent only where the transport gave none; an empty body is present.
    std::optional<Data> data;
    std::shared_ptr<const URLResponse> response;

    URLSessionResult();
    URLSessionResult(std::optional<Data> body, std::shared_ptr<const URLResponse> head);
};

/// Loads URLs. Sessions are cheap to make, may be used from any thread, and share nothing but trusted certificates.
class TOVREL_EXPORT URLSession {
public:
    URLSession(const URLSession&) = delete;
    URLSession& operator=(const URLSession&) = delete;
    virtual ~URLSession();

    /// A session over HTTP/1.1 and HTTP/2.
    ///
    /// Redirects are followed, 20 at most; an Authorization, Proxy-Authorization or Cookie field stops at the border of
    /// its origin. "Accept-Encoding: gzip, deflate, br" is sent unless the request says otherwise or asks for a range.
    /// A request that fails on a connection from an earlier request before the first byte of a response is sent again
    /// if its method is idempotent (RFC 9110, section 9.2.2). Any other goes out on a new connection if the server has
    /// ended the earlier one by then, and fails as networkConnectionLost if it does so later: nothing is sent twice.
    ///
    /// Releasing the last reference lets the requests under way finish.
    /// @throws URLError secureConnectionFailed if an additional certificate authority is not a PEM certificate.
    static std::shared_ptr<URLSession> make(URLSessionConfiguration configuration);

    /// Loads the request and returns whatever status the server gave.
    ///
    /// May be awaited from any executor. Cancelling the awaiting task, before or during the operation, makes it fail as
    /// cancelled.
    /// @throws URLError
    virtual Async<URLSessionResult> data(URLRequest request) = 0;

protected:
    URLSession();
};

} // namespace tovrel
