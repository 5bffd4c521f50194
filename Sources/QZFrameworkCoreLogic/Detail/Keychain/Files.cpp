#include <QZFrameworkCoreLogic/Detail/Keychain/Files.hpp>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace tovrel::detail {

namespace {

constexpr const char* lockName = "lock";
/// Whoever holds the lock may write it; one that a killed process has left is written over.
constexpr const char* temporaryName = "new";

constexpr mode_t fileMode = S_IRUSR | S_IWUSR;
constexpr mode_t directoryMode = S_IRWXU;
constexpr mode_t othersModes = S_IRWXG | S_IRWXO;

/// Another process holds the lock for as long as a write to the disk takes.
constexpr std::chrono::milliseconds lockInterval{2};

/// Opens a file of this user's own; its descriptor is negative if that fails.
FileDescriptor openFile(const std::filesystem::path& path, int flags) {
    return FileDescriptor(::open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, fileMode));
}

void requireOwn(const FileDescriptor& file, mode_t mode) {
    const struct stat status = statusOf(file);
    if (status.st_uid != ::geteuid()) {
        throw KeychainError::denied("a file of another user");
    }
    if ((status.st_mode & othersModes) != 0 && ::fchmod(file.get(), mode) != 0) {
        throw fileError(errno, "narrowing permissions");
    }
}

void requireOwnFile(const FileDescriptor& file) {
    if (!S_ISREG(statusOf(file).st_mode)) {
        throw KeychainError::denied("not a plain file");
    }
    requireOwn(file, fileMode);
}

void writeAll(const FileDescriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file.get(), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            throw fileError(errno, "writing a file");
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

void synchronizeFile(const FileDescriptor& file) {
    if (::fsync(file.get()) != 0) {
        throw fileError(errno, "writing to the disk");
    }
}

} // namespace

KeychainError fileError(int code, std::string_view operation) {
    std::string context(operation);
    context.append(": ").append(std::generic_category().message(code));
    switch (code) {
    case EACCES:
    case EPERM:
    case EROFS:
    case ELOOP:
    case ENOTDIR:
        return KeychainError::denied(context);
    default:
        return KeychainError::unavailable(context);
    }
}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

FileDescriptor::~FileDescriptor() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

PrivateDirectory::PrivateDirectory(std::filesystem::path path) : path_(std::move(path)) {}

void PrivateDirectory::make() const {
    std::filesystem::path made;
    for (const std::filesystem::path& part : path_) {
        made /= part;
        if (::mkdir(made.c_str(), directoryMode) != 0 && errno != EEXIST) {
            throw fileError(errno, "making a directory");
        }
    }
    const FileDescriptor directory = openFile(path_, O_RDONLY | O_DIRECTORY);
    if (directory.get() < 0) {
        throw fileError(errno, "opening the directory");
    }
    requireOwn(directory, directoryMode);
}

FileDescriptor PrivateDirectory::lock(Clock::Instant deadline) const {
    FileDescriptor file = openFile(path_ / lockName, O_RDWR | O_CREAT);
    if (file.get() < 0) {
        throw fileError(errno, "opening the lock");
    }
    requireOwnFile(file);
    while (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            throw fileError(errno, "locking");
        }
        if (Clock::system()->now() >= deadline) {
            throw KeychainError::unavailable("another process holds the lock");
        }
        std::this_thread::sleep_for(lockInterval);
    }
    return file;
}

std::optional<FileDescriptor> PrivateDirectory::open(const std::string& name) const {
    FileDescriptor file = openFile(path_ / name, O_RDONLY);
    if (file.get() < 0) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        throw fileError(errno, "opening a file");
    }
    requireOwnFile(file);
    return file;
}

FileDescriptor PrivateDirectory::replace(const std::string& name, std::string_view bytes) const {
    const std::filesystem::path temporary = path_ / temporaryName;
    // Not O_TRUNC: what lies there under this name may be a second name of another file.
    ::unlink(temporary.c_str());
    FileDescriptor file = openFile(temporary, O_RDWR | O_CREAT | O_EXCL);
    if (file.get() < 0) {
        throw fileError(errno, "making a file");
    }
    try {
        writeAll(file, bytes);
        synchronizeFile(file);
        if (::rename(temporary.c_str(), (path_ / name).c_str()) != 0) {
            throw fileError(errno, "renaming a file");
        }
    } catch (const KeychainError&) {
        ::unlink(temporary.c_str());
        throw;
    }
    synchronize();
    return file;
}

bool PrivateDirectory::remove(const std::string& name) const {
    if (::unlink((path_ / name).c_str()) != 0) {
        if (errno == ENOENT) {
            return false;
        }
        throw fileError(errno, "removing a file");
    }
    synchronize();
    return true;
}

std::vector<std::string> PrivateDirectory::names() const {
    std::error_code error;
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_, error)) {
        names.push_back(entry.path().filename().string());
    }
    if (error && error != std::errc::no_such_file_or_directory) {
        throw fileError(error.value(), "listing the directory");
    }
    return names;
}

void PrivateDirectory::synchronize() const {
    const FileDescriptor directory = openFile(path_, O_RDONLY | O_DIRECTORY);
    if (directory.get() < 0) {
        throw fileError(errno, "opening the directory");
    }
    synchronizeFile(directory);
}

Data readAll(const FileDescriptor& file, std::size_t limit) {
    MutableData bytes;
    constexpr std::size_t step = 64 * 1024;
    while (true) {
        const std::size_t size = bytes.size();
        const ssize_t count = ::pread(file.get(), bytes.extend(step), step, static_cast<off_t>(size));
        bytes.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0) {
            return bytes.freeze();
        }
        if (count < 0 && errno != EINTR) {
            throw fileError(errno, "reading a file");
        }
        if (bytes.size() > limit) {
            throw KeychainError::corrupt("a file of this size");
        }
    }
}

struct stat statusOf(const FileDescriptor& file) {
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) {
        throw fileError(errno, "looking at a file");
    }
    return status;
}

} // namespace tovrel::detail
