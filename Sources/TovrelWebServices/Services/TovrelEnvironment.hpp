#pragma once

namespace tovrel {

/// The deployment stage, shared by every endpoint.
enum class TovrelEnvironment { development, test, production };

} // namespace tovrel
