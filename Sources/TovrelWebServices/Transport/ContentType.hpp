#pragma once

#include <Platform/System/Export.hpp>

#include <string>
#include <string_view>
#include <utility>

namespace tovrel {

/// The media type of a request's body, as its "Content-Type" says it (RFC 9110, section 8.3).
class TOVREL_EXPORT ContentType {
public:
    enum class Kind { multipartFormData, applicationJson, applicationFormUrlEncoded, plainText };

    /// The name of the header.
    static constexpr std::string_view header = "Content-Type";

    /// Labels a body whose parts the caller has formed. The boundary is taken as it is, not checked nor escaped.
    [[nodiscard]] static ContentType multipartFormData(std::string boundary) {
        return ContentType(Kind::multipartFormData, std::move(boundary));
    }
    [[nodiscard]] static ContentType applicationJson() { return ContentType(Kind::applicationJson, {}); }
    [[nodiscard]] static ContentType applicationFormUrlEncoded() {
        return ContentType(Kind::applicationFormUrlEncoded, {});
    }
    [[nodiscard]] static ContentType plainText() { return ContentType(Kind::plainText, {}); }

    [[nodiscard]] Kind kind() const { return kind_; }

    /// Empty for all but `multipartFormData`.
    [[nodiscard]] const std::string& boundary() const { return boundary_; }

    /// The header value; a boundary always stands in double quotes.
    [[nodiscard]] std::string value() const;

    friend bool operator==(const ContentType&, const ContentType&) = default;

private:
    ContentType(Kind kind, std::string boundary) : kind_(kind), boundary_(std::move(boundary)) {}

    Kind kind_;
    std::string boundary_;
};

} // namespace tovrel
