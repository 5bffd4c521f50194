#pragma once

#include <Platform/System/Export.hpp>

namespace tovrel {

/// Makes Qt's event loop the main actor.
class TOVREL_EXPORT QtMainActor {
public:
    QtMainActor() = delete;

    /// Installs the executor of the application's event loop as `MainActor`, and the account screens' texts and colours
    /// as the library's resource bundle. To be called once the application object
    /// is there and before anything uses the main actor; again for every later application object, otherwise harmless.
    ///
    /// One operation runs per event, in the order in which they were posted. What waits when the loop ends does not run
    /// until a next application object comes. Stops the process without an application object, on another thread than
    /// the application's, or when the main actor is something else already.
    static void install();
};

} // namespace tovrel
