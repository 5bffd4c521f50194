#pragma once

#include <Platform/System/Error.hpp>

#include <cstdint>
#include <string>

namespace tovrel {

/// The API or the CDN refused a call: a status outside 200 to 299 with an envelope. Equal when all three fields are.
class TOVREL_EXPORT TovrelDomainServiceError final : public Error {
public:
    TovrelDomainServiceError(std::int64_t statusCode, std::string code, std::string message);

    TovrelDomainServiceError(const TovrelDomainServiceError&) = default;
    TovrelDomainServiceError(TovrelDomainServiceError&&) noexcept = default;
    TovrelDomainServiceError& operator=(const TovrelDomainServiceError&) = default;
    TovrelDomainServiceError& operator=(TovrelDomainServiceError&&) noexcept = default;
    ~TovrelDomainServiceError() override;

    /// The HTTP status.
    [[nodiscard]] std::int64_t statusCode() const { return statusCode_; }
    /// The code of the envelope's meta.
    [[nodiscard]] const std::string& code() const { return code_; }
    /// The message of the envelope's meta; `what()` does not hold it.
    [[nodiscard]] const std::string& message() const { return message_; }

    friend bool operator==(const TovrelDomainServiceError& a, const TovrelDomainServiceError& b) {
        return a.statusCode_ == b.statusCode_ && a.code_ == b.code_ && a.message_ == b.message_;
    }

private:
    std::int64_t statusCode_;
    std::string code_;
    std::string message_;
};

} // namespace tovrel
