#pragma once

#include <Platform/URLLoading/HTTPHeaders.hpp>

#include <string>
#include <string_view>

namespace tovrel {

/// Sees a response go by while it is read, on the transfer's executor. It learns how the transfer ended from whoever
/// awaits it; one that was never told of a head saw nothing.
class TransferObserver {
public:
    virtual ~TransferObserver() = default;

    /// The head of the final response.
    virtual void receiveHead(int statusCode, const std::string& httpVersion, const HTTPHeaders& headers) = 0;

    /// The next bytes of its body, decoded.
    virtual void receiveBody(std::string_view bytes) = 0;
};

} // namespace tovrel
