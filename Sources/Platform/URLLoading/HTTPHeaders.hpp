#pragma once

#include <Platform/System/Export.hpp>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

/// One field line of an HTTP message (RFC 9110, section 5), kept exactly as it was given.
struct TOVREL_EXPORT HTTPHeader {
    std::string name;
    std::string value;

    HTTPHeader(std::string fieldName, std::string fieldValue);

    friend bool operator==(const HTTPHeader&, const HTTPHeader&) = default;
};

/// An ordered list of header fields. Names are compared without regard to case; names and values keep their spelling.
/// Nothing is validated here: a session refuses a field that cannot be sent when the request is sent.
class TOVREL_EXPORT HTTPHeaders {
public:
    HTTPHeaders();
    HTTPHeaders(std::initializer_list<HTTPHeader> fields);
    explicit HTTPHeaders(std::vector<HTTPHeader> fields) noexcept;

    /// The value of the first field of that name, or null. The pointer lives until the list changes.
    const std::string* find(std::string_view name) const& noexcept;
    const std::string* find(std::string_view name) const&& = delete;

    bool contains(std::string_view name) const noexcept;

    /// Replaces every field of that name by one; the first one keeps its place and its spelling.
    void set(std::string_view name, std::string_view value);

    /// Joins the value to the field of that name with "," (no space), or adds the field.
    void add(std::string_view name, std::string_view value);

    /// Adds a field line at the end even if the name is there already.
    void append(std::string name, std::string value);

    /// Removes every field of that name.
    void remove(std::string_view name);

    void clear() noexcept { fields_.clear(); }
    bool empty() const noexcept { return fields_.empty(); }
    std::size_t size() const noexcept { return fields_.size(); }
    std::vector<HTTPHeader>::const_iterator begin() const noexcept { return fields_.begin(); }
    std::vector<HTTPHeader>::const_iterator end() const noexcept { return fields_.end(); }

    /// Same fields, in the same order, in the same spelling.
    friend bool operator==(const HTTPHeaders&, const HTTPHeaders&) = default;

private:
    std::vector<HTTPHeader> fields_;
};

} // namespace tovrel
