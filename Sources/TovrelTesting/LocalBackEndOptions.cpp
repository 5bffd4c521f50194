#include <TovrelTesting/LocalBackEndOptions.hpp>

namespace tovrel::testing {

LocalBackEndOptions::LocalBackEndOptions() = default;

} // namespace tovrel::testing
