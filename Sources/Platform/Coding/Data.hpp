#pragma once

#include <Platform/System/Export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tovrel {

namespace detail {
struct DataBlock;
} // namespace detail

/// An immutable run of bytes, shared between its copies.
///
/// Copying costs a reference count. At least `Data::padding` zero bytes are readable behind the last byte, so parsers
/// that read in wide steps work in place. Zero length is a value like any other: "no data" is an absent
/// `std::optional<Data>`. Copies may be used from several threads at once.
class TOVREL_EXPORT Data {
public:
    /// The number of readable zero bytes behind the end.
    static constexpr std::size_t padding = 64;

    /// Zero bytes.
    Data() noexcept = default;
    /// A copy of `bytes`.
    explicit Data(std::string_view bytes);
    /// A copy of the text up to its terminating NUL.
    explicit Data(const char* text) : Data(std::string_view(text)) {}
    /// A copy of `bytes`.
    explicit Data(const std::string& bytes) : Data(std::string_view(bytes)) {}
    /// A copy of `bytes`.
    explicit Data(const std::vector<std::uint8_t>& bytes);
    /// A copy of the `size` bytes at `bytes`; `bytes` may be null when `size` is 0.
    Data(const void* bytes, std::size_t size);

    Data(const Data& other) noexcept;
    Data(Data&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    Data& operator=(const Data& other) noexcept;
    Data& operator=(Data&& other) noexcept;
    ~Data();

    /// The first byte; never null, also for zero bytes.
    const std::uint8_t* data() const noexcept;
    /// The number of bytes, without the padding.
    std::size_t size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    /// The bytes as characters; valid as long as a copy of this object lives.
    std::string_view view() const noexcept { return {reinterpret_cast<const char*>(data()), size()}; }
    /// A copy of the bytes as a string.
    std::string string() const { return std::string(view()); }

    const std::uint8_t* begin() const noexcept { return data(); }
    const std::uint8_t* end() const noexcept { return data() + size(); }

    friend bool operator==(const Data& left, const Data& right) noexcept {
        return left.block_ == right.block_ || left.view() == right.view();
    }

private:
    friend class MutableData;
    explicit Data(detail::DataBlock* block) noexcept : block_(block) {}

    detail::DataBlock* block_ = nullptr;
};

/// A growing run of bytes that becomes a `Data` without being copied.
///
/// One thread at a time may use an object. Operations that allocate throw `std::bad_alloc`.
class TOVREL_EXPORT MutableData {
public:
    MutableData() noexcept = default;
    MutableData(MutableData&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    MutableData& operator=(MutableData&& other) noexcept;
    MutableData(const MutableData&) = delete;
    MutableData& operator=(const MutableData&) = delete;
    ~MutableData();

    /// Makes room for exactly `capacity` bytes in all; never shrinks.
    void reserve(std::size_t capacity);
    /// Appends a copy of the `size` bytes at `bytes`, which must not lie in this buffer.
    void append(const void* bytes, std::size_t size);
    /// Appends a copy of `bytes`, which must not lie in this buffer.
    void append(std::string_view bytes) { append(bytes.data(), bytes.size()); }
    /// Appends `size` bytes of unspecified content and returns the first of them for writing.
    std::uint8_t* extend(std::size_t size);
    /// Changes the length; added bytes are zero.
    void resize(std::size_t size);
    /// Drops all bytes and keeps the memory.
    void clear() noexcept;

    std::uint8_t* data() noexcept;
    const std::uint8_t* data() const noexcept;
    std::size_t size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    std::size_t capacity() const noexcept;
    std::string_view view() const noexcept { return {reinterpret_cast<const char*>(data()), size()}; }

    /// Hands the bytes over as a `Data` without copying them and leaves this object empty.
    Data freeze();

private:
    detail::DataBlock* block_ = nullptr;
};

} // namespace tovrel
