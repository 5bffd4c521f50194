#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>

#include <optional>
#include <string>

namespace tovrel::testing {

/// A file of the content-delivery network, with what caches need to know (RFC 9110 section 8.8, RFC 9111).
struct TOVREL_EXPORT ContentFile {
    ResponseBody body;
    std::string contentType;
    /// The whole value of `ETag`, quotes included. Made from the body; reset it to send none.
    std::optional<std::string> entityTag;
    std::optional<Date> lastModified;
    /// By default clients keep the file but ask every time whether it is still the same.
    std::optional<std::string> cacheControl = "private, no-cache";

    explicit ContentFile(ResponseBody body, std::string contentType = "application/octet-stream");

    /// A JSON payload in the envelope of a success.
    static ContentFile enveloped(const std::string& data);
};

} // namespace tovrel::testing
