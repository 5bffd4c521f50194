#pragma once

#include <curl/curl.h>

#include <memory>

namespace tovrel::curl {

struct Cleanup {
    void operator()(CURL* handle) const noexcept { curl_easy_cleanup(handle); }
    void operator()(curl_slist* list) const noexcept { curl_slist_free_all(list); }
};

struct MultiCleanup {
    void operator()(CURLM* handle) const noexcept { curl_multi_cleanup(handle); }
};

struct ShareCleanup {
    void operator()(CURLSH* handle) const noexcept { curl_share_cleanup(handle); }
};

using Easy = std::unique_ptr<CURL, Cleanup>;
using List = std::unique_ptr<curl_slist, Cleanup>;
using Multi = std::unique_ptr<CURLM, MultiCleanup>;
using Share = std::unique_ptr<CURLSH, ShareCleanup>;

/// Initialises libcurl once for the process. It is never undone: the host may use libcurl too, at its exit even.
/// These throw `std::bad_alloc`, the only way in which making a handle can fail.
void initialise();
Easy makeEasy();
Multi makeMulti();
Share makeShare();

/// Appends to a list.
void append(List& list, const char* text);

/// Stops the process if libcurl does not know the option: the build and the library at run time do not fit.
void check(CURLcode code);
void check(CURLMcode code);
void check(CURLSHcode code);

} // namespace tovrel::curl
