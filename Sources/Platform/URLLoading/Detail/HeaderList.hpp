#pragma once

#include <curl/curl.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

/// Header fields in the form that libcurl takes, in memory that serves one request after the other.
class HeaderList {
public:
    void clear() noexcept;
    /// An empty value is sent as one.
    void add(std::string_view name, std::string_view value);
    /// Keeps libcurl from sending a field of its own.
    void suppress(std::string_view name);

    /// Valid until the next change.
    curl_slist* list();

private:
    std::string text_;
    std::vector<std::size_t> starts_;
    std::vector<curl_slist> nodes_;
};

} // namespace tovrel
