#pragma once

#include <Platform/System/Export.hpp>

#include <exception>
#include <string>

namespace tovrel {

/// The base of every error family of this library.
///
/// A family adds `kind()`, one factory per kind, and `operator==` over what distinguishes its values. The text of
/// `what()` is for developers: it names what failed and where, and never holds a token, a secret or a header value.
class TOVREL_EXPORT Error : public std::exception {
public:
    const char* what() const noexcept override;

protected:
    explicit Error(std::string message);
    Error(const Error&) = default;
    Error(Error&&) noexcept = default;
    Error& operator=(const Error&) = default;
    Error& operator=(Error&&) noexcept = default;
    ~Error() override;

private:
    std::string message_;
};

} // namespace tovrel
