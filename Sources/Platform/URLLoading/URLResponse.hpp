#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URL.hpp>

namespace tovrel {

/// What came back apart from the body. Immutable, and thus free to share between threads.
class TOVREL_EXPORT URLResponse {
public:
    URLResponse(const URLResponse&) = delete;
    URLResponse& operator=(const URLResponse&) = delete;
    virtual ~URLResponse();

    /// Where the response came from: the last URL of a chain of redirects.
    const URL& url() const noexcept { return url_; }

protected:
    explicit URLResponse(URL url);

private:
    URL url_;
};

} // namespace tovrel
