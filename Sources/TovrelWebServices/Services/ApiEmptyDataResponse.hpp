#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// The payload of calls whose answers carry none. Any JSON value decodes to it; it encodes as an empty object.
struct TOVREL_EXPORT ApiEmptyDataResponse {
    ApiEmptyDataResponse() {}

    friend bool operator==(const ApiEmptyDataResponse&, const ApiEmptyDataResponse&) { return true; }
};

/// Reads nothing of the value that stands for the payload.
template <>
struct Coding<ApiEmptyDataResponse> {
    static ApiEmptyDataResponse decode(Decoder& /*decoder*/) { return ApiEmptyDataResponse(); }
    static void encode(const ApiEmptyDataResponse& /*value*/, Encoder& encoder) { encoder.keyed(); }
};

} // namespace tovrel
