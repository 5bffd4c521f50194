#include <Platform/Coding/Data.hpp>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace tovrel {

namespace detail {

struct DataBlock {
    std::atomic<std::size_t> owners{1};
    std::size_t size = 0;
    std::size_t capacity = 0; // without header and padding
};

} // namespace detail

namespace {

using detail::DataBlock;

constexpr std::size_t overhead = sizeof(DataBlock) + Data::padding;
constexpr std::size_t smallestCapacity = 256;
constexpr std::uint8_t zeros[Data::padding] = {};

std::uint8_t* bytesOf(DataBlock* block) noexcept {
    return reinterpret_cast<std::uint8_t*>(block + 1);
}

std::size_t totalFor(std::size_t capacity) {
    if (capacity > std::numeric_limits<std::size_t>::max() / 2 - overhead) {
        throw std::bad_alloc();
    }
    return capacity + overhead;
}

DataBlock* allocate(std::size_t capacity) {
    void* memory = std::malloc(totalFor(capacity));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    auto* block = new (memory) DataBlock;
    block->capacity = capacity;
    return block;
}

// The block has one owner. Its bytes stay, its address may not: the allocator moves large blocks by remapping their
// pages.
DataBlock* reallocate(DataBlock* block, std::size_t capacity) {
    if (block == nullptr) {
        return allocate(capacity);
    }
    void* memory = std::realloc(static_cast<void*>(block), totalFor(capacity));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    block = static_cast<DataBlock*>(memory);
    block->capacity = capacity;
    return block;
}

void disown(DataBlock* block) noexcept {
    if (block != nullptr && block->owners.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        std::free(block);
    }
}

} // namespace

Data::Data(std::string_view bytes) : Data(bytes.data(), bytes.size()) {}

Data::Data(const std::vector<std::uint8_t>& bytes) : Data(bytes.data(), bytes.size()) {}

Data::Data(const void* bytes, std::size_t size) {
    if (size == 0) {
        return;
    }
    block_ = allocate(size);
    block_->size = size;
    std::memcpy(bytesOf(block_), bytes, size);
    std::memset(bytesOf(block_) + size, 0, padding);
}

Data::Data(const Data& other) noexcept : block_(other.block_) {
    if (block_ != nullptr) {
        block_->owners.fetch_add(1, std::memory_order_relaxed);
    }
}

Data& Data::operator=(const Data& other) noexcept {
    Data copy(other);
    std::swap(block_, copy.block_);
    return *this;
}

Data& Data::operator=(Data&& other) noexcept {
    Data moved(std::move(other));
    std::swap(block_, moved.block_);
    return *this;
}

Data::~Data() {
    disown(block_);
}

const std::uint8_t* Data::data() const noexcept {
    return block_ != nullptr ? bytesOf(block_) : zeros;
}

std::size_t Data::size() const noexcept {
    return block_ != nullptr ? block_->size : 0;
}

MutableData& MutableData::operator=(MutableData&& other) noexcept {
    MutableData moved(std::move(other));
    std::swap(block_, moved.block_);
    return *this;
}

MutableData::~MutableData() {
    disown(block_);
}

void MutableData::reserve(std::size_t wanted) {
    if (wanted > capacity()) {
        block_ = reallocate(block_, wanted);
    }
}

std::uint8_t* MutableData::extend(std::size_t added) {
    const std::size_t oldSize = size();
    if (added > std::numeric_limits<std::size_t>::max() - oldSize) {
        throw std::bad_alloc();
    }
    const std::size_t newSize = oldSize + added;
    if (newSize > capacity()) {
        const std::size_t doubled = capacity() > std::numeric_limits<std::size_t>::max() / 4 ? newSize : capacity() * 2;
        block_ = reallocate(block_, (std::max)({newSize, doubled, smallestCapacity}));
    }
    if (block_ == nullptr) {
        block_ = allocate(smallestCapacity);
    }
    block_->size = newSize;
    return bytesOf(block_) + oldSize;
}

void MutableData::append(const void* bytes, std::size_t added) {
    if (added != 0) {
        std::memcpy(extend(added), bytes, added);
    }
}

void MutableData::resize(std::size_t newSize) {
    const std::size_t oldSize = size();
    if (newSize > oldSize) {
        std::memset(extend(newSize - oldSize), 0, newSize - oldSize);
    } else if (block_ != nullptr) {
        block_->size = newSize;
    }
}

void MutableData::clear() noexcept {
    if (block_ != nullptr) {
        block_->size = 0;
    }
}

std::uint8_t* MutableData::data() noexcept {
    return block_ != nullptr ? bytesOf(block_) : nullptr;
}

const std::uint8_t* MutableData::data() const noexcept {
    return block_ != nullptr ? bytesOf(block_) : zeros;
}

std::size_t MutableData::size() const noexcept {
    return block_ != nullptr ? block_->size : 0;
}

std::size_t MutableData::capacity() const noexcept {
    return block_ != nullptr ? block_->capacity : 0;
}

Data MutableData::freeze() {
    if (block_ == nullptr) {
        return Data();
    }
    const std::size_t slack = block_->capacity - block_->size;
    if (slack > block_->size / 4 + smallestCapacity) {
        block_ = reallocate(block_, block_->size);
    }
    std::memset(bytesOf(block_) + block_->size, 0, Data::padding);
    return Data(std::exchange(block_, nullptr));
}

} // namespace tovrel
