#pragma once

#include <Platform/System/Export.hpp>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tovrel {

/// How the keys of a JSON object map onto described keys. The keys of a `std::map` are data and stay as they are.
class TOVREL_EXPORT KeyDecodingStrategy {
public:
    enum class Kind { useDefaultKeys, convertFromSnakeCase, custom };
    using Function = std::function<std::string(std::string_view key)>;

    /// The same as `useDefaultKeys()`.
    KeyDecodingStrategy() noexcept = default;
    /// Keys are compared as they are.
    static KeyDecodingStrategy useDefaultKeys() noexcept { return KeyDecodingStrategy(); }
    /// A key is converted to camel case before it is compared: "created_at" fills a member described as "createdAt".
    ///
    /// The key is split at each "_"; the first word becomes lower case, each later one lower case with its first letter
    /// in upper case ("base_URI" is "baseUri", "user_2nd" is "user2nd"). Underscores at both ends stay, and so does a
    /// key of one word. Letters outside ASCII stay as they are. A described key with a "_" between words never matches.
    static KeyDecodingStrategy convertFromSnakeCase() noexcept;
    /// A key is compared as `function` returns it. The function may be called from any thread that decodes.
    static KeyDecodingStrategy custom(Function function);

    Kind kind() const noexcept { return kind_; }
    /// The described key that `key` stands for.
    std::string convert(std::string_view key) const;

    /// Custom strategies are equal when one is a copy of the other.
    friend bool operator==(const KeyDecodingStrategy&, const KeyDecodingStrategy&) noexcept = default;

private:
    Kind kind_ = Kind::useDefaultKeys;
    std::shared_ptr<const Function> function_;
};

/// How described keys are written as keys of a JSON object. The keys of a `std::map` are data and stay as they are.
class TOVREL_EXPORT KeyEncodingStrategy {
public:
    enum class Kind { useDefaultKeys, convertToSnakeCase, custom };
    using Function = std::function<std::string(std::string_view key)>;

    /// The same as `useDefaultKeys()`.
    KeyEncodingStrategy() noexcept = default;
    /// Keys are written as they are described.
    static KeyEncodingStrategy useDefaultKeys() noexcept { return KeyEncodingStrategy(); }
    /// Keys are written in snake case: "createdAt" as "created_at", "baseURLText" as "base_url_text".
    static KeyEncodingStrategy convertToSnakeCase() noexcept;
    /// Keys are written as `function` returns them. The function may be called from any thread that encodes.
    static KeyEncodingStrategy custom(Function function);

    Kind kind() const noexcept { return kind_; }
    /// The written form of a described key.
    std::string convert(std::string_view key) const;

    /// Custom strategies are equal when one is a copy of the other.
    friend bool operator==(const KeyEncodingStrategy&, const KeyEncodingStrategy&) noexcept = default;

private:
    Kind kind_ = Kind::useDefaultKeys;
    std::shared_ptr<const Function> function_;
};

} // namespace tovrel
