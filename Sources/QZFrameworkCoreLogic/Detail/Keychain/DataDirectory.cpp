#include <QZFrameworkCoreLogic/Detail/Keychain/DataDirectory.hpp>

#include <cstdlib>

namespace tovrel::detail {

namespace {

/// The directory that a variable names; relative ones do not count.
std::filesystem::path directoryNamedBy(const char* variable) {
    const char* value = std::getenv(variable);
    std::filesystem::path path(value != nullptr ? value : "");
    return path.is_absolute() ? path : std::filesystem::path();
}

} // namespace

std::filesystem::path dataDirectory() {
    std::filesystem::path data = directoryNamedBy("XDG_DATA_HOME");
    if (data.empty()) {
        data = directoryNamedBy("HOME");
        if (!data.empty()) {
            data = data / ".local" / "share";
        }
    }
    return data;
}

} // namespace tovrel::detail
