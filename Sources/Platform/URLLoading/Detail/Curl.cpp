#include <Platform/System/FatalError.hpp>
#include <Platform/URLLoading/Detail/Curl.hpp>

#include <new>
#include <string>

namespace tovrel::curl {

namespace {

template <class Handle>
Handle orThrow(Handle handle) {
    if (!handle) {
        throw std::bad_alloc();
    }
    return handle;
}

[[noreturn]] void misuse(const char* reason) {
    fatalError(std::string("libcurl: ") + reason);
}

} // namespace

void initialise() {
    static const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
    check(code);
}

Easy makeEasy() {
    return orThrow(Easy(curl_easy_init()));
}

Multi makeMulti() {
    return orThrow(Multi(curl_multi_init()));
}

Share makeShare() {
    return orThrow(Share(curl_share_init()));
}

void append(List& list, const char* text) {
    curl_slist* extended = curl_slist_append(list.get(), text);
    if (extended == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(list.release());
    list.reset(extended);
}

void check(CURLcode code) {
    if (code == CURLE_OUT_OF_MEMORY) {
        throw std::bad_alloc();
    }
    if (code != CURLE_OK) {
        misuse(curl_easy_strerror(code));
    }
}

void check(CURLMcode code) {
    if (code == CURLM_OUT_OF_MEMORY) {
        throw std::bad_alloc();
    }
    if (code != CURLM_OK) {
        misuse(curl_multi_strerror(code));
    }
}

void check(CURLSHcode code) {
    if (code != CURLSHE_OK) {
        misuse(curl_share_strerror(code));
    }
}

} // namespace tovrel::curl
