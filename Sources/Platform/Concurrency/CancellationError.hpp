#pragma once

#include <Platform/System/Error.hpp>

namespace tovrel {

/// The surrounding task was cancelled while the operation waited. All its values are equal.
///
/// A cancelled transfer fails with `URLError` cancelled instead; `isCancelled` recognises both.
class TOVREL_EXPORT CancellationError final : public Error {
public:
    CancellationError();
    ~CancellationError() override;

    friend bool operator==(const CancellationError&, const CancellationError&) { return true; }
};

} // namespace tovrel
