#include <TovrelTesting/BackEnd/ScratchDirectory.hpp>
#include <TovrelTesting/BackEnd/Server.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>

#include <fmt/format.h>

#include <utility>

namespace tovrel::testing {

std::unique_ptr<LocalBackEnd> LocalBackEnd::start(const LocalBackEndOptions& options) {
    return std::unique_ptr<LocalBackEnd>(new LocalBackEnd(std::make_unique<Server>(options)));
}

LocalBackEnd::LocalBackEnd(std::unique_ptr<Server> server)
    : cacheDirectory_(std::make_unique<const ScratchDirectory>()), server_(std::move(server)) {}

LocalBackEnd::~LocalBackEnd() = default;

std::uint16_t LocalBackEnd::port() const noexcept {
    return server_->port();
}

std::uint16_t LocalBackEnd::plainPort() const noexcept {
    return server_->plainPort();
}

std::string LocalBackEnd::url(std::string_view target, std::string_view host) const {
    return fmt::format("https://{}:{}{}", host, port(), target);
}

std::string LocalBackEnd::plainUrl(std::string_view target, std::string_view host) const {
    return fmt::format("http://{}:{}{}", host, plainPort(), target);
}

const std::string& LocalBackEnd::certificateAuthorityPem() const noexcept {
    return server_->certificateAuthorityPem();
}

const std::string& LocalBackEnd::keyPin() const noexcept {
    return server_->keyPin();
}

const std::filesystem::path& LocalBackEnd::cacheDirectory() const noexcept {
    return cacheDirectory_->path();
}

void LocalBackEnd::on(std::string_view method, std::string_view pattern, RouteHandler handler) {
    onHost({}, method, pattern, std::move(handler));
}

void LocalBackEnd::onHost(std::string_view host, std::string_view method, std::string_view pattern,
                          RouteHandler handler) {
    server_->state().routes.add(host, method, pattern, std::move(handler));
}

void LocalBackEnd::inject(Fault fault, FaultSelector selector) {
    server_->state().faults.add(std::move(fault), std::move(selector));
}

void LocalBackEnd::clearFaults() {
    server_->state().faults.clear();
}

void LocalBackEnd::releaseStalled() {
    server_->releaseStalled();
}

void LocalBackEnd::closeConnections() {
    server_->closeConnections();
}

std::vector<ReceivedRequest> LocalBackEnd::requests() const {
    return server_->state().recorder.requests();
}

void LocalBackEnd::clearRequests() {
    server_->state().recorder.clear();
}

std::vector<ReceivedRequest> LocalBackEnd::waitForRequests(std::size_t count,
                                                           std::chrono::milliseconds deadline) const {
    return server_->state().recorder.waitForRequests(count, deadline);
}

BackEndStatistics LocalBackEnd::statistics() const {
    return server_->state().recorder.statistics();
}

BackEndStatistics LocalBackEnd::waitUntil(const std::function<bool(const BackEndStatistics&)>& condition,
                                          std::chrono::milliseconds deadline) const {
    return server_->state().recorder.waitUntil(condition, deadline);
}

} // namespace tovrel::testing
