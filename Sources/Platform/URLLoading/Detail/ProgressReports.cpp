#include <Platform/URLLoading/Detail/ProgressReports.hpp>
#include <Platform/URLLoading/Detail/Redirect.hpp>

#include <boost/asio/dispatch.hpp>
#include <boost/asio/post.hpp>

#include <charconv>
#include <mutex>
#include <system_error>
#include <utility>

namespace tovrel {

namespace {

constexpr int notModified = 304;

bool hasBody(int statusCode, const HTTPHeaders& headers) {
    return statusCode != notModified && !(isRedirect(statusCode) && headers.find("location") != nullptr);
}

/// The length that the server announces, unless it is that of the encoded body.
std::optional<std::uint64_t> announcedSize(const HTTPHeaders& headers) {
    const std::string* field = headers.find("content-length");
    if (field == nullptr || headers.find("content-encoding") != nullptr) {
        return std::nullopt;
    }
    std::uint64_t size = 0;
    const char* end = field->data() + field->size();
    const auto [parsed, error] = std::from_chars(field->data(), end, size);
    return error == std::errc() && parsed == end ? std::optional(size) : std::nullopt;
}

} // namespace

/// What travels to the observer's executor: one report at a time, the latest. Nothing of the transfer is kept alive
/// there.
class ProgressReports::Delivery : public std::enable_shared_from_this<Delivery> {
public:
    explicit Delivery(std::shared_ptr<const URLProgressObserver> observer) : observer_(std::move(observer)) {}

    void send(const URLProgress& progress) {
        {
            const std::scoped_lock lock(mutex_);
            latest_ = progress;
            if (std::exchange(isOnItsWay_, true)) {
                return;
            }
        }
        boost::asio::post(observer_->executor(), [self = shared_from_this()] { self->arrive(); });
    }

private:
    void arrive() {
        URLProgress latest;
        {
            const std::scoped_lock lock(mutex_);
            latest = latest_;
            isOnItsWay_ = false;
        }
        observer_->report(latest);
    }

    const std::shared_ptr<const URLProgressObserver> observer_;
    std::mutex mutex_;
    URLProgress latest_;
    bool isOnItsWay_ = false;
};

ProgressReports::ProgressReports(const URLRequest& request, std::shared_ptr<TransferObserver> next)
    : delivery_(std::make_shared<Delivery>(request.progressObserver)),
      next_(std::move(next)),
      expectsBody_(request.httpMethod != "HEAD") {}

ProgressReports::~ProgressReports() = default;

void ProgressReports::receiveHead(int statusCode, const std::string& httpVersion, const HTTPHeaders& headers) {
    isActive_ = expectsBody_ && hasBody(statusCode, headers);
    if (isActive_) {
        progress_ = URLProgress(0, announcedSize(headers));
        delivery_->send(progress_);
    }
    if (next_) {
        next_->receiveHead(statusCode, httpVersion, headers);
    }
}

void ProgressReports::receiveBody(std::string_view bytes) {
    if (isActive_) {
        progress_.receivedBytes += bytes.size();
        delivery_->send(progress_);
    }
    if (next_) {
        next_->receiveBody(bytes);
    }
}

void ProgressReports::reportWhole(const URLRequest& request, std::size_t size) {
    if (request.httpMethod != "HEAD") {
        // Here and now where this is the observer's executor: whoever waits there goes on without another turn.
        boost::asio::dispatch(request.progressObserver->executor(), [observer = request.progressObserver, size] {
            observer->report(URLProgress(size, size));
        });
    }
}

} // namespace tovrel
