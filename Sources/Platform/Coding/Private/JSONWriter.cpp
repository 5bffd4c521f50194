#include <Platform/Coding/Base64.hpp>
#include <Platform/Coding/Private/JSONWriter.hpp>

#include <simdjson.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace tovrel::detail {

namespace {

// Room for any scalar but a string, with its comma.
constexpr std::size_t scalarRoom = 40;
constexpr std::size_t initialCapacity = 448;

constexpr std::uint64_t eachByte(std::uint8_t byte) {
    return 0x0101010101010101u * byte;
}

// Whether a byte needs an escape; bytes above ASCII do not.
constexpr std::uint64_t escapedBytes(std::uint64_t word) {
    const std::uint64_t quote = word ^ eachByte('"');
    const std::uint64_t backslash = word ^ eachByte('\\');
    return ((word - eachByte(0x20)) & ~word) | ((quote - eachByte(1)) & ~quote) |
           ((backslash - eachByte(1)) & ~backslash);
}

constexpr bool needsEscape(char character) {
    return static_cast<std::uint8_t>(character) < 0x20 || character == '"' || character == '\\';
}

// The number of leading bytes that stand for themselves; tells whether one lies above ASCII.
std::size_t plainPrefix(std::string_view text, bool& hasHighBytes) {
    std::size_t index = 0;
    std::uint64_t seen = 0;
    for (; text.size() - index >= sizeof(std::uint64_t); index += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + index, sizeof(word));
        if ((escapedBytes(word) & eachByte(0x80)) != 0) {
            break;
        }
        seen |= word;
    }
    for (; index < text.size() && !needsEscape(text[index]); ++index) {
        seen |= static_cast<std::uint8_t>(text[index]);
    }
    hasHighBytes = hasHighBytes || (seen & eachByte(0x80)) != 0;
    return index;
}

} // namespace

JSONWriter::JSONWriter(const JSONEncoder& settings) : settings_(settings) {
    prepare(initialCapacity);
}

void JSONWriter::prepare(std::size_t size) {
    if (static_cast<std::size_t>(end_ - cursor_) >= size) {
        return;
    }
    const std::size_t written = position();
    buffer_.resize(written);
    const std::size_t added = (std::max)(size, written);
    buffer_.extend(added);
    begin_ = reinterpret_cast<char*>(buffer_.data());
    cursor_ = begin_ + written;
    end_ = begin_ + buffer_.size();
}

void JSONWriter::put(std::string_view text) {
    std::memcpy(cursor_, text.data(), text.size());
    cursor_ += text.size();
}

void JSONWriter::breakLine() {
    prepare(1 + 2 * depth_);
    put('\n');
    std::memset(cursor_, ' ', 2 * depth_);
    cursor_ += 2 * depth_;
}

// A value behind a key has its comma and its line break in front of the key.
void JSONWriter::startValue() {
    prepare(scalarRoom);
    if (needsComma_) {
        put(',');
    }
    if (settings_.prettyPrints && !isBehindKey_ && depth_ > 0) {
        breakLine();
        prepare(scalarRoom);
    }
    needsComma_ = true;
    isBehindKey_ = false;
}

void JSONWriter::null() {
    startValue();
    put("null");
}

void JSONWriter::boolean(bool value) {
    startValue();
    put(value ? std::string_view("true") : std::string_view("false"));
}

template <class Integer>
void JSONWriter::putInteger(Integer value) {
    cursor_ = std::to_chars(cursor_, end_, value).ptr;
}

void JSONWriter::integer(std::int64_t value) {
    startValue();
    putInteger(value);
}

void JSONWriter::unsignedInteger(std::uint64_t value) {
    startValue();
    putInteger(value);
}

template <class Real>
void JSONWriter::putReal(Real value) {
    constexpr Real endOfExactIntegers = 9007199254740992.0;
    if (!std::isfinite(value)) {
        throw EncodingError::invalidValue("JSON has no number that is not finite");
    }
    startValue();
    if (value == 0 && std::signbit(value)) {
        put("-0.0");
    } else if (std::fabs(value) < endOfExactIntegers && value == std::trunc(value)) {
        putInteger(static_cast<std::int64_t>(value));
    } else {
        cursor_ = std::to_chars(cursor_, end_, value).ptr;
    }
}

void JSONWriter::real(double value) {
    putReal(value);
}

void JSONWriter::real(float value) {
    putReal(value);
}

void JSONWriter::string(std::string_view text) {
    startValue();
    putQuoted(text);
}

void JSONWriter::data(const Data& bytes) {
    startValue();
    putQuoted(base64Encoded(bytes.view()));
}

void JSONWriter::date(Engine& engine, const Date& date) {
    switch (settings_.dateEncodingStrategy.kind()) {
    case DateEncodingStrategy::Kind::deferredToDate:
        return real(date.secondsSince2001());
    case DateEncodingStrategy::Kind::millisecondsSince1970:
        return real(date.millisecondsSince1970());
    case DateEncodingStrategy::Kind::secondsSince1970:
        return real(date.secondsSince1970());
    case DateEncodingStrategy::Kind::iso8601:
        if (const std::optional<std::string> text = date.iso8601()) {
            return string(*text);
        }
        throw EncodingError::invalidValue("the date has no ISO 8601 form");
    case DateEncodingStrategy::Kind::custom:
        return engine.encodeByHand(
            [&](Encoder& encoder) { (*settings_.dateEncodingStrategy.function())(date, encoder); });
    }
}

void JSONWriter::beginObject() {
    startValue();
    put('{');
    needsComma_ = false;
    ++depth_;
    if (settings_.sortsKeys) {
        unsorted_.emplace_back();
        unsorted_.back().begin = position();
    }
}

void JSONWriter::startMember() {
    prepare(scalarRoom);
    if (needsComma_) {
        put(',');
    }
    needsComma_ = false;
    isBehindKey_ = true;
    if (settings_.prettyPrints) {
        breakLine();
    }
}

void JSONWriter::putColon() {
    prepare(2);
    put(':');
    if (settings_.prettyPrints) {
        put(' ');
    }
}

void JSONWriter::fieldKey(const FieldTable& field) {
    const KeyEncodingStrategy::Kind strategy = settings_.keyEncodingStrategy.kind();
    if (strategy == KeyEncodingStrategy::Kind::convertToSnakeCase && !field.snakeCaseKey.empty()) {
        return mapKey(field.snakeCaseKey);
    }
    if (strategy != KeyEncodingStrategy::Kind::useDefaultKeys || field.jsonKey.empty() || settings_.sortsKeys) {
        return describedKey(field.key);
    }
    startMember();
    prepare(field.jsonKey.size() + 2);
    put(field.jsonKey);
    putColon();
}

void JSONWriter::describedKey(std::string_view key) {
    if (settings_.keyEncodingStrategy.kind() == KeyEncodingStrategy::Kind::useDefaultKeys) {
        return mapKey(key);
    }
    mapKey(settings_.keyEncodingStrategy.convert(key));
}

void JSONWriter::mapKey(std::string_view key) {
    if (settings_.sortsKeys) {
        needsComma_ = false;
        isBehindKey_ = true;
        unsorted_.back().members.push_back(Member{std::string(key), position()});
        return;
    }
    startMember();
    putQuoted(key);
    putColon();
}

void JSONWriter::endObject() {
    if (settings_.sortsKeys) {
        sortMembers();
    }
    --depth_;
    if (settings_.prettyPrints && cursor_[-1] != '{') {
        breakLine();
    }
    prepare(1);
    put('}');
    needsComma_ = true;
}

void JSONWriter::sortMembers() {
    const UnsortedObject object = std::exchange(unsorted_.back(), UnsortedObject());
    unsorted_.pop_back();
    const std::string values(begin_ + object.begin, cursor_);
    struct Sorted {
        const Member* member;
        std::string_view value;
    };
    std::vector<Sorted> sorted;
    sorted.reserve(object.members.size());
    for (std::size_t index = 0; index < object.members.size(); ++index) {
        const std::size_t begin = object.members[index].begin - object.begin;
        const std::size_t end =
            index + 1 < object.members.size() ? object.members[index + 1].begin - object.begin : values.size();
        sorted.push_back(Sorted{&object.members[index], std::string_view(values).substr(begin, end - begin)});
    }
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Sorted& left, const Sorted& right) { return left.member->key < right.member->key; });
    cursor_ = begin_ + object.begin;
    needsComma_ = false;
    for (const Sorted& entry : sorted) {
        startMember();
        putQuoted(entry.member->key);
        putColon();
        prepare(entry.value.size());
        put(entry.value);
        needsComma_ = true;
        isBehindKey_ = false;
    }
}

void JSONWriter::beginList() {
    startValue();
    put('[');
    needsComma_ = false;
    ++depth_;
}

void JSONWriter::endList() {
    --depth_;
    if (settings_.prettyPrints && cursor_[-1] != '[') {
        breakLine();
    }
    prepare(1);
    put(']');
    needsComma_ = true;
}

void JSONWriter::putQuoted(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr std::size_t longestEscape = 6;
    bool hasHighBytes = false;
    prepare(text.size() + 2);
    put('"');
    for (std::string_view rest = text;;) {
        const std::size_t plain = plainPrefix(rest, hasHighBytes);
        prepare(plain + longestEscape + 1);
        put(rest.substr(0, plain));
        if (plain == rest.size()) {
            break;
        }
        const char character = rest[plain];
        rest.remove_prefix(plain + 1);
        put('\\');
        switch (character) {
        case '"':
        case '\\':
            put(character);
            break;
        case '\b':
            put('b');
            break;
        case '\f':
            put('f');
            break;
        case '\n':
            put('n');
            break;
        case '\r':
            put('r');
            break;
        case '\t':
            put('t');
            break;
        default:
            put("u00");
            put(digits[static_cast<std::uint8_t>(character) >> 4]);
            put(digits[static_cast<std::uint8_t>(character) & 15]);
        }
    }
    if (hasHighBytes && !simdjson::validate_utf8(text.data(), text.size())) {
        throw EncodingError::invalidValue("the text is not UTF-8");
    }
    put('"');
}

Data JSONWriter::finish() {
    buffer_.resize(position());
    return buffer_.freeze();
}

} // namespace tovrel::detail
