#pragma once

#include <Platform/Coding/Data.hpp>
#include <Platform/Concurrency/Clock.hpp>
#include <QZFrameworkCoreLogic/KeychainError.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace tovrel::detail {

/// What a failed system call means for a keychain.
KeychainError fileError(int code, std::string_view operation);

/// An open file, closed with this object.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    [[nodiscard]] int get() const { return descriptor_; }

private:
    int descriptor_;
};

/// A directory of one user's files. All functions throw `KeychainError`; links are not followed.
///
/// What is found with wider permissions than the user's own is narrowed; what belongs to another user is refused.
class PrivateDirectory {
public:
    explicit PrivateDirectory(std::filesystem::path path);

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// Makes it and its parents where they are missing.
    void make() const;

    /// Waits for the lock that all who change the directory take, and holds it for as long as the descriptor lives.
    [[nodiscard]] FileDescriptor lock(Clock::Instant deadline) const;

    /// A file opened for reading; absent if there is none.
    [[nodiscard]] std::optional<FileDescriptor> open(const std::string& name) const;

    /// Puts a file of these bytes in the place of whatever has the name, all or nothing, and on the disk. Only under
    /// the lock. Gives the file.
    FileDescriptor replace(const std::string& name, std::string_view bytes) const;

    /// Removes a file and gives whether there was one. Only under the lock.
    bool remove(const std::string& name) const;

    /// The names of the files; none if the directory is missing.
    [[nodiscard]] std::vector<std::string> names() const;

private:
    void synchronize() const;

    std::filesystem::path path_;
};

/// The whole of an open file, which may have `limit` bytes at most.
Data readAll(const FileDescriptor& file, std::size_t limit);

struct stat statusOf(const FileDescriptor& file);

} // namespace tovrel::detail
