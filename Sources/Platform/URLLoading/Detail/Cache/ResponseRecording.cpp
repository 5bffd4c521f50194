#include <Platform/URLLoading/Detail/Cache/DiskWriter.hpp>
#include <Platform/URLLoading/Detail/Cache/ResponseRecording.hpp>
#include <Platform/URLLoading/Detail/Cache/Storability.hpp>

#include <utility>

namespace tovrel {

void ResponseRecording::receiveHead(int statusCode, const std::string& httpVersion, const HTTPHeaders& headers) {
    isStorable_ = tovrel::isStorable(statusCode, httpVersion, headers);
    if (isStorable_) {
        writer_ = visit_->store().writeToDisk(visit_->key());
    }
}

void ResponseRecording::receiveBody(std::string_view bytes) {
    if (writer_) {
        writer_->append(bytes);
    }
}

void ResponseRecording::commit(const CacheStore::Found& replaced, StoredResponse head, Data body) {
    const auto response = std::make_shared<const CachedResponse>(std::move(head), std::move(body));
    if (replaced && replaced->variant != response->variant) {
        visit_->store().remove(visit_->key(), replaced->variant);
    }
    visit_->store().put(*visit_, response, writer_.get());
}

} // namespace tovrel
