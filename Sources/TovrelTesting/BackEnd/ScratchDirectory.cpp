#include <TovrelTesting/BackEnd/ScratchDirectory.hpp>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace tovrel::testing {

ScratchDirectory::ScratchDirectory() {
    std::string name = (std::filesystem::temp_directory_path() / "tovrel-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::filesystem::filesystem_error("cannot make a temporary directory",
                                                std::error_code(errno, std::generic_category()));
    }
    path_ = name;
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

} // namespace tovrel::testing
