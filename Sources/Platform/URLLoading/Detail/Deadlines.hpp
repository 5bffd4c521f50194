#pragma once

#include <chrono>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

namespace tovrel {

/// The points in time at which somebody must be looked at, earliest first. One heap serves any number of owners, and
/// entering, moving and leaving cost a logarithm of it at most. Not thread-safe.
class Deadlines {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// Somebody with a deadline. Must leave before it dies.
    class Entry {
    public:
        Entry() = default;
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;

    protected:
        ~Entry() = default;

    private:
        friend class Deadlines;
        static constexpr std::size_t nowhere = std::numeric_limits<std::size_t>::max();

        std::size_t position_ = nowhere;
    };

    /// Enters, or moves if entered already.
    void set(Entry& entry, TimePoint time);
    /// Leaves; nothing happens if not entered.
    void remove(Entry& entry) noexcept;

    std::optional<TimePoint> earliest() const noexcept;

    /// Removes and returns an entry whose time has come, or null.
    Entry* takeDue(TimePoint now) noexcept;

private:
    struct Node {
        TimePoint time;
        Entry* entry;
    };

    void place(std::size_t position, Node node) noexcept;
    void restore(std::size_t position) noexcept;

    std::vector<Node> heap_;
};

} // namespace tovrel
