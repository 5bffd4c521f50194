#pragma once

#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/Coding/Private/EncodingEngine.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::detail {

/// The JSON form of values: writes the text as they come.
class JSONWriter {
public:
    using Engine = EncodingEngine<JSONWriter>;

    explicit JSONWriter(const JSONEncoder& settings);

    void null();
    void boolean(bool value);
    void integer(std::int64_t value);
    void unsignedInteger(std::uint64_t value);
    void real(double value);
    void real(float value);
    void string(std::string_view text);
    void data(const Data& bytes);
    void date(Engine& engine, const Date& date);

    void beginObject();
    void fieldKey(const FieldTable& field);
    void describedKey(std::string_view key);
    void mapKey(std::string_view key);
    void endObject();
    void beginList();
    void endList();

    Data finish();

private:
    struct Member {
        std::string key;
        std::size_t begin; // of the value, from the start of the text
    };

    // An object whose members wait for being sorted. Their values stand in the text one behind the other.
    struct UnsortedObject {
        std::size_t begin = 0;
        std::vector<Member> members;
    };

    void prepare(std::size_t size);
    void put(char character) { *cursor_++ = character; }
    void put(std::string_view text);
    std::size_t position() const noexcept { return static_cast<std::size_t>(cursor_ - begin_); }

    void startValue();
    void startMember();
    void putColon();
    void breakLine();
    void putQuoted(std::string_view text);
    template <class Real>
    void putReal(Real value);
    template <class Integer>
    void putInteger(Integer value);
    void sortMembers();

    const JSONEncoder& settings_;
    MutableData buffer_;
    char* begin_ = nullptr;
    char* cursor_ = nullptr;
    char* end_ = nullptr;
    bool needsComma_ = false;
    bool isBehindKey_ = false;
    std::size_t depth_ = 0;
    std::vector<UnsortedObject> unsorted_;
};

} // namespace tovrel::detail
