#pragma once

#include <Platform/System/Export.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tovrel {

/// One step from a value to a value inside it: a key of an object or an index of a list.
class TOVREL_EXPORT CodingKey {
public:
    explicit CodingKey(std::string name) : name_(std::move(name)) {}
    explicit CodingKey(std::size_t index) : index_(index) {}

    /// The key; empty for a step into a list.
    const std::string& name() const noexcept { return name_; }
    /// The index; absent for a step into an object.
    std::optional<std::size_t> index() const noexcept { return index_; }

    friend bool operator==(const CodingKey&, const CodingKey&) = default;

private:
    std::string name_;
    std::optional<std::size_t> index_;
};

/// The steps from the outermost value to the one in question.
using CodingPath = std::vector<CodingKey>;

/// The path as text, for example "data.items[3].title"; empty for the outermost value.
TOVREL_EXPORT std::string describe(const CodingPath& path);

} // namespace tovrel
