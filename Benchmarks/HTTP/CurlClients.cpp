#include <HTTP/CurlLoop.hpp>
#include <string>
#include <string_view>
#include <utility>

namespace tovrel::benchmarks {

namespace {

curl_slist* fieldList() {
    curl_slist* list = nullptr;
    for (const auto& [name, value] : requestFields()) {
        list = curl_slist_append(list, (name + ": " + value).c_str());
    }
    return list;
}

/// Everything is set once; a request costs nothing but libcurl. The body lands in a buffer that is used again.
class BareSlot final : public CurlLoop::Slot {
public:
    explicit BareSlot(const Endpoint& endpoint) : Slot(endpoint), fields_(fieldList()) {
        curl_easy_setopt(easy(), CURLOPT_HTTPHEADER, fields_);
        curl_easy_setopt(easy(), CURLOPT_WRITEFUNCTION, &BareSlot::onBody);
        curl_easy_setopt(easy(), CURLOPT_WRITEDATA, this);
    }
    ~BareSlot() override { curl_slist_free_all(fields_); }

    void prepare(const Load& load) override {
        body_.clear();
        if (path_ != load.path) {
            path_ = load.path;
            curl_easy_setopt(easy(), CURLOPT_URL, endpoint().url(path_).c_str());
        }
    }

    std::size_t finish() override { return body_.size(); }

private:
    static std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* self) {
        static_cast<BareSlot*>(self)->body_.append(bytes, size * count);
        return size * count;
    }

    curl_slist* fields_;
    std::string path_;
    std::string body_;
};

/// The options of a request are set, its header list and its URL made for each, and a response of its own comes of it,
/// with header fields and a body in memory of just the right size.
class SameWorkSlot final : public CurlLoop::Slot {
public:
    explicit SameWorkSlot(const Endpoint& endpoint) : Slot(endpoint) {
        curl_easy_setopt(easy(), CURLOPT_WRITEFUNCTION, &SameWorkSlot::onBody);
        curl_easy_setopt(easy(), CURLOPT_WRITEDATA, this);
        curl_easy_setopt(easy(), CURLOPT_HEADERFUNCTION, &SameWorkSlot::onHeader);
        curl_easy_setopt(easy(), CURLOPT_HEADERDATA, this);
    }
    ~SameWorkSlot() override { curl_slist_free_all(fields_); }

    void prepare(const Load& load) override {
        curl_slist_free_all(std::exchange(fields_, fieldList()));
        const std::string url = endpoint().url(load.path);
        curl_easy_setopt(easy(), CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy(), CURLOPT_HTTPGET, 1L);
        curl_easy_setopt(easy(), CURLOPT_CUSTOMREQUEST, nullptr);
        curl_easy_setopt(easy(), CURLOPT_CONNECTTIMEOUT_MS, 61'000L);
        curl_easy_setopt(easy(), CURLOPT_HTTPHEADER, fields_);
    }

    std::size_t finish() override {
        const std::string body = std::move(body_);
        const std::vector<std::pair<std::string, std::string>> head = std::move(head_);
        body_ = std::string();
        head_.clear();
        return body.size();
    }

private:
    static std::size_t onHeader(char* bytes, std::size_t size, std::size_t count, void* self) {
        const std::string_view line(bytes, size * count);
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos && colon > 0) {
            const std::size_t start = line.find_first_not_of(" \t", colon + 1);
            const std::size_t end = line.find_last_not_of(" \t\r\n");
            static_cast<SameWorkSlot*>(self)->head_.emplace_back(
                line.substr(0, colon), start <= end ? line.substr(start, end + 1 - start) : std::string_view());
        }
        return line.size();
    }

    static std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* self) {
        auto& slot = *static_cast<SameWorkSlot*>(self);
        if (slot.body_.empty()) {
            curl_off_t length = 0;
            curl_easy_getinfo(slot.easy(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
            slot.body_.reserve(static_cast<std::size_t>(length > 0 ? length : 0));
        }
        slot.body_.append(bytes, size * count);
        return size * count;
    }

    curl_slist* fields_ = nullptr;
    std::vector<std::pair<std::string, std::string>> head_;
    std::string body_;
};

template <class SlotType>
HTTPPeer loopOf(const char* name) {
    return HTTPPeer(name, [](const Endpoint& endpoint, unsigned /*connections*/) {
        return std::make_unique<CurlLoop>(endpoint,
                                          [](const Endpoint& place) { return std::make_unique<SlotType>(place); });
    });
}

} // namespace

HTTPPeer bareCurl() {
    return loopOf<BareSlot>(bareLoopName);
}

HTTPPeer sameWorkCurl() {
    return loopOf<SameWorkSlot>(sameWorkLoopName);
}

} // namespace tovrel::benchmarks
