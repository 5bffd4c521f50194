#include <TovrelWebServices/Services/TovrelDomainServiceError.hpp>

#include <utility>

namespace tovrel {

TovrelDomainServiceError::TovrelDomainServiceError(std::int64_t statusCode, std::string code, std::string message)
    : Error("The server refused the call with the status " + std::to_string(statusCode) + "."),
      statusCode_(statusCode),
      code_(std::move(code)),
      message_(std::move(message)) {}

TovrelDomainServiceError::~TovrelDomainServiceError() = default;

} // namespace tovrel
