#pragma once

#include <Platform/Events/Publisher.hpp>
#include <Platform/System/Export.hpp>

namespace tovrel {

/// How much larger than usual the account screens' texts are. For the main thread only.
class TOVREL_EXPORT ScreenTextSize {
public:
    ScreenTextSize() = delete;

    /// The factor applied to every font; 1 at the start.
    [[nodiscard]] static double factor();

    /// The factor from now on, kept between 0.5 and 4: what the user has chosen in the system, for instance.
    static void choose(double factor);

    /// Sends the new factor each time it changes, on the main thread.
    [[nodiscard]] static Publisher<double> changes();
};

} // namespace tovrel
