#pragma once

#include <Platform/URLLoading/URLError.hpp>

#include <optional>
#include <string_view>

namespace tovrel {

/// Where the bytes of a response body go: into memory, or through a decoder into another sink.
class BodySink {
public:
    using Failure = std::optional<URLError::Kind>;

    virtual ~BodySink() = default;

    /// Takes the next bytes. After a failure the sink is not used again.
    [[nodiscard]] virtual Failure write(std::string_view bytes) = 0;

    /// Says that there are no more.
    [[nodiscard]] virtual Failure finish() = 0;
};

} // namespace tovrel
