#pragma once

#include <Platform/URLLoading/Detail/Curl.hpp>
#include <Platform/URLLoading/Detail/TrustStore.hpp>
#include <Platform/URLLoading/URLSessionConfiguration.hpp>

#include <cstdint>
#include <optional>

namespace tovrel {

/// What all transfers of a session have in common.
class TransferSettings {
public:
    /// @throws URLError secureConnectionFailed if an additional certificate authority is not a PEM certificate.
    explicit TransferSettings(const URLSessionConfiguration& configuration);

    std::optional<std::uint64_t> maximumBodySize() const noexcept { return maximumBodySize_; }
    bool allowsPlainHTTP() const noexcept { return allowsPlainHTTP_; }

    /// Sets the options that no request changes.
    void configureEasy(CURL* easy);
    void configureMulti(CURLM* multi) const;

private:
    static CURLcode trust(CURL* easy, void* context, void* settings) noexcept;

    URLProxy proxy_;
    std::optional<std::uint64_t> maximumBodySize_;
    unsigned maximumConnectionsPerHost_;
    bool allowsPlainHTTP_;
    bool allowsHTTP2_;
    TrustStore trustStore_;
    curl::List connectTo_;
    curl::Share share_;
};

} // namespace tovrel
