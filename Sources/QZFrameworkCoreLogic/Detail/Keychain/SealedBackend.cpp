#include <QZFrameworkCoreLogic/Detail/Keychain/RecordCoding.hpp>
#include <QZFrameworkCoreLogic/Detail/Keychain/SealedBackend.hpp>

#include <cerrno>
#include <sodium.h>
#include <unistd.h>

namespace tovrel::detail {

namespace {

constexpr const char* keyName = "key";
/// Far above anything that is a small secret.
constexpr std::size_t largestFile = std::size_t{64} << 20;

/// Bytes of a key in a buffer that is wiped.
class KeyBuffer {
public:
    explicit KeyBuffer(const FileDescriptor& file) : size_(::pread(file.get(), bytes_.data(), bytes_.size(), 0)) {}
    KeyBuffer(const KeyBuffer&) = delete;
    KeyBuffer& operator=(const KeyBuffer&) = delete;
    ~KeyBuffer() { sodium_memzero(bytes_.data(), bytes_.size()); }

    [[nodiscard]] bool isKey() const { return size_ == static_cast<ssize_t>(SealingKey::size); }
    [[nodiscard]] std::string_view view() const { return {bytes_.data(), SealingKey::size}; }

private:
    // One more, to notice a file that is too long.
    std::array<char, SealingKey::size + 1> bytes_{};
    ssize_t size_;
};

bool isSame(const struct timespec& left, const struct timespec& right) {
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

/// Holds while the path leads to the same file. The file is kept open, so that no later one gets its number.
class FileWitness final : public KeychainWitness {
public:
    FileWitness(std::filesystem::path path, FileDescriptor file)
        : path_(std::move(path)), file_(std::move(file)), status_(statusOf(file_)) {}

    [[nodiscard]] bool holds() const override {
        struct stat now {};
        return ::lstat(path_.c_str(), &now) == 0 && now.st_dev == status_.st_dev && now.st_ino == status_.st_ino &&
               now.st_size == status_.st_size && isSame(now.st_mtim, status_.st_mtim) &&
               isSame(now.st_ctim, status_.st_ctim);
    }

private:
    std::filesystem::path path_;
    FileDescriptor file_;
    struct stat status_;
};

/// Holds while nothing has the path.
class AbsenceWitness final : public KeychainWitness {
public:
    explicit AbsenceWitness(std::filesystem::path path) : path_(std::move(path)) {}

    [[nodiscard]] bool holds() const override {
        struct stat now {};
        return ::lstat(path_.c_str(), &now) != 0 && errno == ENOENT;
    }

private:
    std::filesystem::path path_;
};

} // namespace

SealedBackend::SealedBackend(std::filesystem::path directory) : directory_(std::move(directory)) {}

KeychainReading SealedBackend::read(const std::string& key, Clock::Instant) {
    const std::string name = sealedFileName(key);
    std::optional<FileDescriptor> file = directory_.open(name);
    if (!file) {
        return KeychainReading(std::nullopt, std::make_shared<AbsenceWitness>(directory_.path() / name));
    }
    const Data sealed = readAll(*file, largestFile);
    const std::unique_ptr<SealingKey> sealingKey = readKey();
    if (!sealingKey) {
        throw KeychainError::corrupt("the key is missing");
    }
    const std::optional<Data> bytes = unseal(*sealingKey, key, sealed.view());
    std::optional<KeychainRecord> record = bytes ? decodeRecord(bytes->view()) : std::nullopt;
    if (!record) {
        throw KeychainError::corrupt("unsealing");
    }
    return KeychainReading(std::move(record),
                           std::make_shared<FileWitness>(directory_.path() / name, *std::move(file)));
}

std::shared_ptr<const KeychainWitness> SealedBackend::write(const std::string& key, const KeychainRecord& record,
                                                            Clock::Instant deadline) {
    directory_.make();
    const FileDescriptor lock = directory_.lock(deadline);
    const std::unique_ptr<SealingKey> sealingKey = readOrMakeKey();
    const std::string name = sealedFileName(key);
    FileDescriptor file = directory_.replace(name, seal(*sealingKey, key, encodeRecord(record).view()).view());
    return std::make_shared<FileWitness>(directory_.path() / name, std::move(file));
}

bool SealedBackend::remove(const std::string& key, Clock::Instant deadline) {
    const std::string name = sealedFileName(key);
    // Nothing to lock where there is nothing.
    if (AbsenceWitness(directory_.path() / name).holds()) {
        return false;
    }
    const FileDescriptor lock = directory_.lock(deadline);
    return directory_.remove(name);
}

std::vector<SealedEntry> SealedBackend::entries() const {
    std::vector<SealedEntry> entries;
    for (const std::string& name : directory_.names()) {
        if (std::optional<SealedEntry> entry = isSealedFileName(name) ? entryOf(name) : std::nullopt) {
            entries.push_back(*std::move(entry));
        }
    }
    return entries;
}

std::optional<SealedEntry> SealedBackend::entryOf(const std::string& fileName) const {
    try {
        const std::optional<FileDescriptor> file = directory_.open(fileName);
        std::optional<std::string> key = file ? sealedName(readAll(*file, largestFile).view()) : std::nullopt;
        // A file under the name of another entry is nobody's.
        if (key && sealedFileName(*key) == fileName) {
            return SealedEntry(*std::move(key), static_cast<std::uint64_t>(statusOf(*file).st_mtim.tv_sec));
        }
    } catch (const KeychainError&) {
        // Listed is what can be read.
    }
    return std::nullopt;
}

std::unique_ptr<SealingKey> SealedBackend::readKey() const {
    const std::optional<FileDescriptor> file = directory_.open(keyName);
    if (!file) {
        return nullptr;
    }
    const KeyBuffer buffer(*file);
    return buffer.isKey() ? std::make_unique<SealingKey>(buffer.view()) : nullptr;
}

std::unique_ptr<SealingKey> SealedBackend::readOrMakeKey() const {
    std::unique_ptr<SealingKey> key = readKey();
    if (!key) {
        // Whatever another key has sealed is lost already.
        key = std::make_unique<SealingKey>();
        directory_.replace(keyName, key->view());
    }
    return key;
}

} // namespace tovrel::detail
