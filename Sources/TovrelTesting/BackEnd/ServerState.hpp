#pragma once

#include <TovrelTesting/BackEnd/FaultScript.hpp>
#include <TovrelTesting/BackEnd/Recorder.hpp>
#include <TovrelTesting/BackEnd/Routes.hpp>
#include <TovrelTesting/BackEnd/StallRoom.hpp>
#include <TovrelTesting/LocalBackEndOptions.hpp>

namespace tovrel::testing {

/// What all connections of one server share.
struct ServerState {
    LocalBackEndOptions options;
    Routes routes;
    FaultScript faults;
    Recorder recorder;
    StallRoom stalls;

    explicit ServerState(const LocalBackEndOptions& serverOptions)
        : options(serverOptions), recorder(serverOptions.recording), stalls(recorder) {}
};

} // namespace tovrel::testing
