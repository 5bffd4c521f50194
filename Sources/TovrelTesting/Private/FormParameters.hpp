#pragma once

#include <TovrelTesting/ReceivedRequest.hpp>

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel::testing {

/// Named values in the form "application/x-www-form-urlencoded".
class FormParameters {
public:
    /// Reads them strictly: absent where an escape is incomplete, a text is not UTF-8 or a name occurs twice.
    static std::optional<FormParameters> parse(std::string_view text);

    /// The value; one that is empty counts as left out (RFC 6749 section 3.2).
    std::optional<std::string> value(const std::string& name) const;

private:
    std::map<std::string, std::string> values_;
};

/// Whether the request says that its body has that form.
bool hasFormBody(const ReceivedRequest& request);

} // namespace tovrel::testing
