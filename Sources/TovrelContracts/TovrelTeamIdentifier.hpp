#pragma once

namespace tovrel {

/// Which of the teams an application is from.
enum class TovrelTeamIdentifier { tovrelstudios, marrowquill };

} // namespace tovrel
