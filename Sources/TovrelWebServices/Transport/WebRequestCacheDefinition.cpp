#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/Transport/WebRequestCacheDefinition.hpp>

#include <cmath>

namespace tovrel {

std::int64_t WebRequestCacheSize::bytes() const {
    const double product = unit_ == Unit::kb ? size_ * 1024.0 : size_ * 1024.0 * 1024.0;
    const double bound = std::ldexp(1.0, 63);
    if (!(product >= -bound && product < bound)) {
        fatalError("A cache size has to be a 64-bit number of bytes.");
    }
    return static_cast<std::int64_t>(product);
}

} // namespace tovrel
