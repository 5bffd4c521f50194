#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/EasyHandle.hpp>
#include <Platform/URLLoading/Detail/Transfer.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <new>
#include <string_view>

namespace tovrel {

namespace {

/// libcurl sends a body of up to this size together with the head; a larger one goes out in pieces, each of which
/// counts as a sign of life.
constexpr std::size_t largestBodyInOnePiece = 64U << 10U;

constexpr std::string_view defaultCodings = "gzip, deflate, br";

template <class Value>
void set(CURL* easy, CURLoption option, Value value) {
    curl::check(curl_easy_setopt(easy, option, value));
}

/// The session frames messages itself: what a caller says about it could only contradict.
bool describesFraming(std::string_view name) noexcept {
    return ascii::equalIgnoringCase(name, "Content-Length") || ascii::equalIgnoringCase(name, "Transfer-Encoding");
}

/// Never the first to give up: the engine's own deadline covers the time in the queue too.
long connectTimeoutMilliseconds(double seconds) noexcept {
    constexpr double longest = std::numeric_limits<std::int32_t>::max();
    return static_cast<long>(std::min(std::ceil(seconds * 1000) + 1000, longest));
}

} // namespace

EasyHandle::EasyHandle(TransferSettings& settings, OpenSockets& sockets, const Deadlines::TimePoint& now)
    : sockets_(sockets), now_(now), easy_(curl::makeEasy()) {
    CURL* easy = easy_.get();
    settings.configureEasy(easy);
    sockets.serve(easy);
    set(easy, CURLOPT_PRIVATE, this);
    set(easy, CURLOPT_HEADERFUNCTION, &EasyHandle::onHeader);
    set(easy, CURLOPT_HEADERDATA, this);
    set(easy, CURLOPT_WRITEFUNCTION, &EasyHandle::onBody);
    set(easy, CURLOPT_WRITEDATA, this);
    set(easy, CURLOPT_READFUNCTION, &EasyHandle::onSend);
    set(easy, CURLOPT_READDATA, this);
    set(easy, CURLOPT_SEEKFUNCTION, &EasyHandle::onSeek);
    set(easy, CURLOPT_SEEKDATA, this);
    set(easy, CURLOPT_PREREQFUNCTION, &EasyHandle::onAttempt);
    set(easy, CURLOPT_PREREQDATA, this);
}

EasyHandle& EasyHandle::of(CURL* easy) noexcept {
    void* self = nullptr;
    curl_easy_getinfo(easy, CURLINFO_PRIVATE, &self);
    return *static_cast<EasyHandle*>(self);
}

void EasyHandle::prepare(Transfer& transfer) {
    transfer_ = &transfer;
    set(get(), CURLOPT_URL, transfer.request().url.absoluteString().c_str());
    set(get(), CURLOPT_FRESH_CONNECT, transfer.needsNewConnection() ? 1L : 0L);
    set(get(), CURLOPT_CONNECTTIMEOUT_MS, connectTimeoutMilliseconds(transfer.idleLimit()));
    setMethodAndBody(transfer);
    setFields(transfer);
}

void EasyHandle::release() noexcept {
    transfer_ = nullptr;
    curl_easy_setopt(get(), CURLOPT_POSTFIELDS, nullptr);
}

void EasyHandle::setMethodAndBody(const Transfer& transfer) {
    const std::string& method = transfer.request().httpMethod;
    const std::optional<Data> body = transfer.outgoingBody();
    // Servers want to hear "no bytes" for these (RFC 9110, section 8.6).
    const bool mustHaveLength = method == "POST" || method == "PUT" || method == "PATCH";
    if (method == "HEAD") {
        set(get(), CURLOPT_NOBODY, 1L);
        set(get(), CURLOPT_CUSTOMREQUEST, static_cast<const char*>(nullptr));
        return;
    }
    set(get(), CURLOPT_HTTPGET, 1L);
    set(get(), CURLOPT_CUSTOMREQUEST, method == "GET" && !body ? nullptr : method.c_str());
    if (!body && !mustHaveLength) {
        return;
    }
    const std::size_t size = body ? body->size() : 0;
    set(get(), CURLOPT_POST, 1L);
    set(get(), CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(size));
    if (size <= largestBodyInOnePiece) {
        set(get(), CURLOPT_POSTFIELDS, body ? reinterpret_cast<const char*>(body->data()) : "");
    } else {
        set(get(), CURLOPT_POSTFIELDS, static_cast<const char*>(nullptr));
    }
}

void EasyHandle::setFields(const Transfer& transfer) {
    const HTTPHeaders& headers = transfer.request().headers;
    fields_.clear();
    for (const HTTPHeader& field : headers) {
        if (!describesFraming(field.name)) {
            fields_.add(field.name, field.value);
        }
    }
    for (const std::string_view name : {"Expect", "Content-Type"}) {
        if (!headers.contains(name)) {
            fields_.suppress(name);
        }
    }
    if (!headers.contains("Accept-Encoding") && !headers.contains("Range")) {
        fields_.add("Accept-Encoding", defaultCodings);
    }
    set(get(), CURLOPT_HTTPHEADER, fields_.list());
}

template <bool (Transfer::*receive)(std::string_view)>
std::size_t EasyHandle::deliver(std::string_view bytes) noexcept {
    transfer_->lastActivity = now_;
    try {
        return (transfer_->*receive)(bytes) ? bytes.size() : 0;
    } catch (const std::bad_alloc&) {
        transfer_->failOutOfMemory();
        return 0;
    }
}

std::size_t EasyHandle::onHeader(char* bytes, std::size_t size, std::size_t count, void* self) noexcept {
    return static_cast<EasyHandle*>(self)->deliver<&Transfer::receiveHeader>({bytes, size * count});
}

std::size_t EasyHandle::onBody(char* bytes, std::size_t size, std::size_t count, void* self) noexcept {
    return static_cast<EasyHandle*>(self)->deliver<&Transfer::receiveBody>({bytes, size * count});
}

std::size_t EasyHandle::onSend(char* buffer, std::size_t size, std::size_t count, void* self) noexcept {
    auto& handle = *static_cast<EasyHandle*>(self);
    handle.transfer_->lastActivity = handle.now_;
    return handle.transfer_->sendBody({buffer, size * count});
}

int EasyHandle::onSeek(void* self, curl_off_t offset, int origin) noexcept {
    auto& handle = *static_cast<EasyHandle*>(self);
    const bool done =
        origin == SEEK_SET && offset >= 0 && handle.transfer_->rewindBody(static_cast<std::uint64_t>(offset));
    return done ? CURL_SEEKFUNC_OK : CURL_SEEKFUNC_FAIL;
}

int EasyHandle::onAttempt(void* self, char* /*address*/, char* /*localAddress*/, int /*port*/, int localPort) noexcept {
    const auto& handle = *static_cast<EasyHandle*>(self);
    Transfer& transfer = *handle.transfer_;
    if (transfer.mayRepeat()) {
        return CURL_PREREQFUNC_OK;
    }
    return transfer.startOnlyAttempt(handle.sockets_.hasPeerLeft(localPort)) ? CURL_PREREQFUNC_OK
                                                                             : CURL_PREREQFUNC_ABORT;
}

} // namespace tovrel
