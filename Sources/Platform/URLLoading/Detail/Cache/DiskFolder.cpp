#include <Platform/URLLoading/Detail/Cache/DiskError.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskFolder.hpp>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace tovrel {

namespace {

/// Later changes of the working directory shall not move it.
std::filesystem::path fixedPath(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::path path = std::filesystem::absolute(folder, error);
    return error ? folder : path;
}

} // namespace

DiskFolder::DiskFolder(const std::filesystem::path& folder)
    : folder_(fixedPath(folder)), file_(folder_ / "responses.sqlite") {}

std::unique_ptr<DiskStore> DiskFolder::open() {
    use_.reset();
    make();
    DiskLock door(folder_ / "door");
    door.lock();
    if (condemned_ && condemned_ == identity()) {
        removeFiles();
    }
    condemned_.reset();
    makeFile();
    use_.emplace(folder_ / "use");
    const bool isAlone = use_->tryLock();
    opened_ = identity();
    auto store = std::make_unique<DiskStore>(file_);
    if (isAlone) {
        store->sweep();
    }
    use_->share();
    return store;
}

bool DiskFolder::isCurrent() const {
    return opened_ == identity();
}

void DiskFolder::make() const {
    std::filesystem::path path;
    for (const std::filesystem::path& part : folder_) {
        path /= part;
        if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST && errno != EISDIR && errno != EROFS) {
            throw DiskError::fromSystem(errno, "make the folder");
        }
    }
}

void DiskFolder::makeFile() const {
    // An existing file must not be opened here: to close it would drop the locks of this process's other connections.
    const int descriptor = ::open(file_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor >= 0) {
        ::close(descriptor);
    } else if (errno != EEXIST) {
        throw DiskError::fromSystem(errno, "make the file");
    }
}

void DiskFolder::removeFiles() const {
    // The log first: alone it is nothing, while the file with another one's log would be damage.
    for (const char* suffix : {"-wal", "-shm", ""}) {
        std::filesystem::path path = file_;
        path += suffix;
        std::error_code error;
        std::filesystem::remove_all(path, error);
    }
}

std::optional<DiskFolder::Identity> DiskFolder::identity() const {
    struct stat status {};
    if (::stat(file_.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return Identity(status.st_dev, status.st_ino);
}

} // namespace tovrel
