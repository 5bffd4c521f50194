#pragma once

#include <curl/curl.h>

#include <HTTP/HTTPClient.hpp>
#include <memory>
#include <optional>
#include <vector>

namespace tovrel::benchmarks {

/// libcurl's multi-socket interface on one epoll set, the way its manual shows it in C. What a request costs beyond
/// that is up to the slots.
class CurlLoop final : public HTTPClient {
public:
    /// An easy handle with what belongs to one request at a time.
    class Slot {
    public:
        explicit Slot(const Endpoint& endpoint);
        virtual ~Slot();
        Slot(const Slot&) = delete;
        Slot& operator=(const Slot&) = delete;

        CURL* easy() const { return easy_; }
        /// Before each request.
        virtual void prepare(const Load& load) = 0;
        /// After each request; returns the size of the body.
        virtual std::size_t finish() = 0;

    protected:
        const Endpoint& endpoint() const { return endpoint_; }

    private:
        CURL* easy_;
        const Endpoint& endpoint_;
    };

    using MakeSlot = std::function<std::unique_ptr<Slot>(const Endpoint&)>;

    CurlLoop(const Endpoint& endpoint, MakeSlot makeSlot);
    ~CurlLoop() override;

    void get(const Load& load) override;

private:
    static int onSocket(CURL* easy, curl_socket_t socket, int what, void* self, void* watched);
    static int onTimer(CURLM* multi, long milliseconds, void* self);
    void begin(Slot& slot);
    void step();
    void drain();

    Endpoint endpoint_;
    MakeSlot makeSlot_;
    int epoll_;
    CURLM* multi_;
    std::optional<double> alarm_;
    std::vector<std::unique_ptr<Slot>> slots_;
    const Load* load_ = nullptr;
    std::size_t toBegin_ = 0;
    std::size_t running_ = 0;
};

} // namespace tovrel::benchmarks
