#pragma once

namespace tovrel {

/// Which account screen is meant.
enum class TovrelUserAccountViewState { manageAccount, signIn };

} // namespace tovrel
