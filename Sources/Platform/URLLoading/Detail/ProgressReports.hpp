#pragma once

#include <Platform/URLLoading/Detail/TransferObserver.hpp>
#include <Platform/URLLoading/URLProgressObserver.hpp>
#include <Platform/URLLoading/URLRequest.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tovrel {

/// Tells the request's observer how far the body is, and passes what it sees on to the next who looks on, if any.
class ProgressReports final : public TransferObserver {
public:
    /// @param request Has an observer.
    ProgressReports(const URLRequest& request, std::shared_ptr<TransferObserver> next);
    ~ProgressReports() override;

    void receiveHead(int statusCode, const std::string& httpVersion, const HTTPHeaders& headers) override;
    void receiveBody(std::string_view bytes) override;

    /// Reports a body that is there as a whole.
    static void reportWhole(const URLRequest& request, std::size_t size);

private:
    class Delivery;

    std::shared_ptr<Delivery> delivery_;
    std::shared_ptr<TransferObserver> next_;
    const bool expectsBody_;
    bool isActive_ = false;
    URLProgress progress_;
};

} // namespace tovrel
