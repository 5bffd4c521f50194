#pragma once

#include <Platform/Coding/Data.hpp>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tovrel::detail {

/// A key for sealed entries. Its bytes are wiped with it.
class SealingKey {
public:
    static constexpr std::size_t size = 32;

    /// A new random key.
    SealingKey();
    /// The key of these bytes, of which there are `size`.
    explicit SealingKey(std::string_view bytes);
    SealingKey(const SealingKey&) = delete;
    SealingKey& operator=(const SealingKey&) = delete;
    ~SealingKey();

    [[nodiscard]] std::string_view view() const {
        return {reinterpret_cast<const char*>(bytes_.data()), bytes_.size()};
    }
    [[nodiscard]] const unsigned char* data() const { return bytes_.data(); }

private:
    std::array<unsigned char, size> bytes_;
};

/// The file of an entry: a mark, the length of its name, the name, a nonce, and the encrypted bytes with their
/// authentication (XChaCha20-Poly1305), which covers all that stands before them.
Data seal(const SealingKey& key, std::string_view name, std::string_view bytes);

/// What was sealed under this name; absent if the file is damaged, of another name or of another key.
std::optional<Data> unseal(const SealingKey& key, std::string_view name, std::string_view file);

/// The name that a file bears, which nothing vouches for before it is unsealed; absent if it is no such file.
std::optional<std::string> sealedName(std::string_view file);

/// The name of the file of an entry.
std::string sealedFileName(std::string_view name);

/// Whether a file may hold an entry, by its name.
bool isSealedFileName(std::string_view fileName);

} // namespace tovrel::detail
