#pragma once

#include <filesystem>

namespace tovrel::testing {

/// A new directory for temporary files that goes with all that is in it.
class ScratchDirectory {
public:
    /// Throws `std::filesystem::filesystem_error` if there is no room for it.
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& path() const noexcept { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace tovrel::testing
