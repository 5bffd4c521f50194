#pragma once

#include <Platform/URLLoading/Detail/Cache/DiskLock.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskStore.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <sys/types.h>
#include <utility>

namespace tovrel {

/// The folder of a store, which several processes may use at once.
///
/// Who opens or replaces the database holds "door" alone meanwhile, so nobody ever meets half of an old database and
/// half of a new one. Who has it open shares "use", so that one who is alone knows it. One thread at a time may use an
/// object.
class DiskFolder {
public:
    explicit DiskFolder(const std::filesystem::path& folder);

    /// Opens the store, which is made when there is none. Throws `DiskError`; a damaged file is replaced by the next
    /// attempt.
    std::unique_ptr<DiskStore> open();

    /// Whether there is a file to be opened.
    [[nodiscard]] bool hasFile() const { return identity().has_value(); }

    /// Whether the opened file is still the one that another process would open.
    [[nodiscard]] bool isCurrent() const;

    /// The opened file has proved to be damaged: the next attempt to open it replaces it, unless another process has
    /// done so by then.
    void condemn() { condemned_ = opened_; }

private:
    /// Device and number of a file.
    using Identity = std::pair<dev_t, ino_t>;

    void make() const;
    void makeFile() const;
    void removeFiles() const;
    [[nodiscard]] std::optional<Identity> identity() const;

    std::filesystem::path folder_;
    std::filesystem::path file_;
    std::optional<DiskLock> use_;
    std::optional<Identity> opened_;
    std::optional<Identity> condemned_;
};

} // namespace tovrel
