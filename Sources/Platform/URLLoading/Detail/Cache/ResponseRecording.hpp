#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/URLLoading/Detail/Cache/CacheStore.hpp>
#include <Platform/URLLoading/Detail/Cache/StoredResponse.hpp>
#include <Platform/URLLoading/Detail/TransferObserver.hpp>

#include <memory>
#include <string>
#include <string_view>

namespace tovrel {

/// Writes the body of a response to the disk while it is read, if the response may be stored. Dropping it without
/// `commit` leaves nothing behind.
class ResponseRecording final : public TransferObserver {
public:
    explicit ResponseRecording(std::shared_ptr<CacheVisit> visit) : visit_(std::move(visit)) {}

    void receiveHead(int statusCode, const std::string& httpVersion, const HTTPHeaders& headers) override;
    void receiveBody(std::string_view bytes) override;

    /// Whether the response that was seen may be stored.
    bool isStorable() const noexcept { return isStorable_; }

    /// Stores the response, now that all of it has come, and forgets the one that the same request found before.
    void commit(const CacheStore::Found& replaced, StoredResponse head, Data body);

private:
    std::shared_ptr<CacheVisit> visit_;
    bool isStorable_ = false;
    std::shared_ptr<DiskWriter> writer_;
};

} // namespace tovrel
