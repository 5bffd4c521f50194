#pragma once

#include <Platform/URLLoading/Detail/Curl.hpp>
#include <Platform/URLLoading/Detail/Deadlines.hpp>
#include <Platform/URLLoading/Detail/HeaderList.hpp>
#include <Platform/URLLoading/Detail/OpenSockets.hpp>
#include <Platform/URLLoading/Detail/TransferSettings.hpp>

#include <cstddef>
#include <string_view>

namespace tovrel {

class Transfer;

/// One of libcurl's handles, used for one transfer after the other. Everything that a request can change is set for
/// each.
class EasyHandle {
public:
    /// @param now The engine's clock, which it sets before it lets libcurl work.
    EasyHandle(TransferSettings& settings, OpenSockets& sockets, const Deadlines::TimePoint& now);
    EasyHandle(const EasyHandle&) = delete;
    EasyHandle& operator=(const EasyHandle&) = delete;

    /// The object behind one of libcurl's handles.
    static EasyHandle& of(CURL* easy) noexcept;

    CURL* get() const noexcept { return easy_.get(); }
    Transfer* transfer() const noexcept { return transfer_; }

    /// Makes ready for the transfer's current request.
    void prepare(Transfer& transfer);
    /// Lets go of the transfer and of the body that it lent.
    void release() noexcept;

private:
    void setMethodAndBody(const Transfer& transfer);
    void setFields(const Transfer& transfer);

    static std::size_t onHeader(char* bytes, std::size_t size, std::size_t count, void* self) noexcept;
    static std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* self) noexcept;
    static std::size_t onSend(char* buffer, std::size_t size, std::size_t count, void* self) noexcept;
    static int onSeek(void* self, curl_off_t offset, int origin) noexcept;
    static int onAttempt(void* self, char* address, char* localAddress, int port, int localPort) noexcept;

    template <bool (Transfer::*receive)(std::string_view)>
    std::size_t deliver(std::string_view bytes) noexcept;

    const OpenSockets& sockets_;
    const Deadlines::TimePoint& now_;
    HeaderList fields_;
    Transfer* transfer_ = nullptr;
    curl::Easy easy_;
};

} // namespace tovrel
