#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/URLLoading/HTTPHeaders.hpp>
#include <Platform/URLLoading/URLRequest.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

/// A request field that the response depends on, and what it said: a digest, for it may be a secret.
struct SelectingField {
    /// In lower case.
    std::string name;
    /// Empty where the request had no such field.
    std::string digest;

    SelectingField(std::string fieldName, std::string valueDigest);

    friend bool operator==(const SelectingField&, const SelectingField&) = default;
};

/// What is kept of a response besides its body, and of the request that it answered.
struct StoredResponse {
    int statusCode = 0;
    std::string httpVersion;
    HTTPHeaders headers;
    Date requestTime;
    Date responseTime;
    /// Authorization first, whatever Vary says: a response to one user is not for another.
    std::vector<SelectingField> selectingFields;

    StoredResponse();
    StoredResponse(const URLRequest& request, int status, std::string version, HTTPHeaders fields, Date requested,
                   Date received);

    /// Whether this response may answer the request as far as the fields that it depends on go (RFC 9111, section 4.1).
    bool isSelectedBy(const URLRequest& request) const;

    /// Tells the responses of one URL apart.
    std::string variant() const;

    /// The form that lies on disk: one line for the response, then one for each field.
    std::string encoded() const;
    /// Absent where the text is no such form.
    static std::optional<StoredResponse> decoded(std::string_view text);
};

/// Whether a response that has this Vary can answer no later request: by "*", or by what is no field name.
bool variesAlways(const HTTPHeaders& headers);

} // namespace tovrel
