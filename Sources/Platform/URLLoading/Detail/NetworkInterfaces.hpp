#pragma once

namespace tovrel {

/// Whether an interface other than the loopback is up and has an address that leads anywhere.
bool isAnyNetworkUp();

} // namespace tovrel
