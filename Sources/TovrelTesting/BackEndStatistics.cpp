#include <TovrelTesting/BackEndStatistics.hpp>

namespace tovrel::testing {

BackEndStatistics::BackEndStatistics() = default;

} // namespace tovrel::testing
