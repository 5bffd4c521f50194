#pragma once

namespace tovrel {

/// The captions of the platform's button of Sign in with Apple, by the platform's numbers.
enum class AppleIDButtonType { signIn = 0, continue_ = 1, signUp = 2 };

/// The colours of the platform's button of Sign in with Apple.
enum class AppleIDButtonStyle { white, black };

} // namespace tovrel
