#include <TovrelTesting/BackEnd/CurlClient.hpp>

#include <fmt/format.h>

#include <algorithm>

namespace tovrel::testing {

namespace {

struct ListDeleter {
    void operator()(curl_slist* list) const noexcept { curl_slist_free_all(list); }
};

using List = std::unique_ptr<curl_slist, ListDeleter>;

List listOf(const std::vector<std::string>& lines) {
    List list;
    for (const std::string& line : lines) {
        list.reset(curl_slist_append(list.release(), line.c_str()));
    }
    return list;
}

std::size_t appendBody(char* bytes, std::size_t size, std::size_t count, void* user) {
    auto& result = *static_cast<CurlResult*>(user);
    result.body.append(bytes, size * count);
    result.arrivals.push_back(std::chrono::steady_clock::now());
    return size * count;
}

std::size_t appendHead(char* bytes, std::size_t size, std::size_t count, void* user) {
    static_cast<CurlResult*>(user)->head.append(bytes, size * count);
    return size * count;
}

} // namespace

struct CurlClient::Transfer {
    CURL* handle;
    CurlRequest request;
    CurlResult result;
    List headers;
    List connectTo;

    Transfer(CURL* easy, const CurlRequest& source) : handle(easy), request(source) {}

    void complete(CURLcode code) {
        result.code = code;
        curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &result.status);
        curl_easy_getinfo(handle, CURLINFO_HTTP_VERSION, &result.version);
        curl_easy_getinfo(handle, CURLINFO_NUM_CONNECTS, &result.newConnections);
    }
};

CurlClient::CurlClient(const LocalBackEnd& backEnd) : CurlClient(backEnd, backEnd.certificateAuthorityPem()) {}

CurlClient::CurlClient(const LocalBackEnd& backEnd, std::string authority)
    : authority_(std::move(authority)),
      connectTo_{fmt::format("::127.0.0.1:{}", backEnd.port())},
      multi_(curl_multi_init()),
      easy_(curl_easy_init()) {
    if (backEnd.plainPort() != 0) {
        connectTo_.insert(connectTo_.begin(), fmt::format(":{0}:127.0.0.1:{0}", backEnd.plainPort()));
    }
}

CurlClient::~CurlClient() {
    curl_easy_cleanup(easy_);
    curl_multi_cleanup(multi_);
}

std::unique_ptr<CurlClient::Transfer> CurlClient::prepare(const CurlRequest& request, CURL* handle) const {
    auto transfer = std::make_unique<Transfer>(handle, request);
    const CurlRequest& own = transfer->request;
    transfer->headers = listOf(own.headers);
    transfer->connectTo = listOf(connectTo_);
    curl_easy_reset(handle);
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_PROXY, "");
    curl_easy_setopt(handle, CURLOPT_URL, own.url.c_str());
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, transfer->headers.get());
    curl_easy_setopt(handle, CURLOPT_CONNECT_TO, transfer->connectTo.get());
    curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, own.version);
    curl_easy_setopt(handle, CURLOPT_PIPEWAIT, 1L);
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(own.timeout.count()));
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &appendBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &transfer->result);
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &appendHead);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, &transfer->result);
    curl_blob authority = {const_cast<char*>(authority_.data()), authority_.size(), CURL_BLOB_COPY};
    curl_easy_setopt(handle, CURLOPT_CAINFO_BLOB, &authority);
    curl_easy_setopt(handle, CURLOPT_CAPATH, nullptr);
    if (own.method == "HEAD") {
        curl_easy_setopt(handle, CURLOPT_NOBODY, 1L);
    } else if (own.method != "GET" || !own.body.empty()) {
        curl_easy_setopt(handle, CURLOPT_POST, 1L);
        curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, own.method.c_str());
        curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(own.body.size()));
        curl_easy_setopt(handle, CURLOPT_POSTFIELDS, own.body.data());
    }
    curl_easy_setopt(handle, CURLOPT_FRESH_CONNECT, own.isOnFreshConnection ? 1L : 0L);
    if (!own.acceptEncoding.empty()) {
        curl_easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, own.acceptEncoding.c_str());
    }
    if (trustsAnyAuthority_) {
        curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, 0L);
    }
    if (allowsOldTLS_) {
        curl_easy_setopt(handle, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_1));
        curl_easy_setopt(handle, CURLOPT_SSL_CIPHER_LIST, "DEFAULT@SECLEVEL=0");
    }
    return transfer;
}

CurlResult CurlClient::perform(const CurlRequest& request) {
    const auto transfer = prepare(request, easy_);
    transfer->complete(curl_easy_perform(easy_));
    return std::move(transfer->result);
}

std::vector<CurlResult> CurlClient::performTogether(const std::vector<CurlRequest>& requests) {
    std::vector<std::unique_ptr<Transfer>> transfers;
    for (const CurlRequest& request : requests) {
        transfers.push_back(prepare(request, curl_easy_init()));
        curl_multi_add_handle(multi_, transfers.back()->handle);
    }
    int running = 1;
    while (running > 0) {
        curl_multi_perform(multi_, &running);
        int left = 0;
        while (CURLMsg* message = curl_multi_info_read(multi_, &left)) {
            const auto finished = std::ranges::find(transfers, message->easy_handle,
                                                    [](const auto& transfer) { return transfer->handle; });
            (*finished)->complete(message->data.result);
        }
        if (running > 0) {
            curl_multi_poll(multi_, nullptr, 0, 1000, nullptr);
        }
    }
    std::vector<CurlResult> results;
    for (const auto& transfer : transfers) {
        curl_multi_remove_handle(multi_, transfer->handle);
        curl_easy_cleanup(transfer->handle);
        results.push_back(std::move(transfer->result));
    }
    return results;
}

} // namespace tovrel::testing
