#include <Platform/Concurrency/CancellationError.hpp>

namespace tovrel {

CancellationError::CancellationError() : Error("The task was cancelled.") {}

CancellationError::~CancellationError() = default;

} // namespace tovrel
