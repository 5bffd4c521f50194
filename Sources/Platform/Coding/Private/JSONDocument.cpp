#include <Platform/Coding/DecodingError.hpp>
#include <Platform/Coding/Private/JSONDocument.hpp>
#include <Platform/Coding/Private/JSONNumbers.hpp>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace tovrel::detail {

namespace {

constexpr std::size_t deepestNesting = 512;
// A parser takes about 14 bytes for each byte of the text: one of up to a mebibyte is kept for the next text.
constexpr std::size_t largestKeptCapacity = std::size_t{72} << 10;
constexpr std::size_t smallestCapacity = std::size_t{4} << 10;

constexpr std::string_view standInText = "-1.7976931348623153e308";
constexpr double standIn = -1.7976931348623153e308;

static_assert(Data::padding >= simdjson::SIMDJSON_PADDING);

const char* reason(simdjson::error_code code) {
    switch (code) {
    case simdjson::EMPTY:
        return "it is empty";
    case simdjson::DEPTH_ERROR:
        return "it is nested too deeply";
    case simdjson::UTF8_ERROR:
        return "it is not valid UTF-8";
    case simdjson::NUMBER_ERROR:
        return "a number is malformed";
    case simdjson::STRING_ERROR:
        return "an escape in a string is malformed";
    case simdjson::UNESCAPED_CHARS:
        return "a string holds an unescaped control character";
    case simdjson::UNCLOSED_STRING:
        return "a string does not end";
    case simdjson::CAPACITY:
        return "it is too large";
    default:
        return "its syntax is wrong";
    }
}

#if defined(__linux__) && defined(MADV_HUGEPAGE)
// A large parser's memory is fresh on every use: in small pages a fifth of the decoding time would go into page faults.
void preferLargePages(void* memory, std::size_t size) {
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto begin = (reinterpret_cast<std::uintptr_t>(memory) + page - 1) / page * page;
    const auto end = (reinterpret_cast<std::uintptr_t>(memory) + size) / page * page;
    if (begin < end) {
        ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    }
}
#else
void preferLargePages(void*, std::size_t) {}
#endif

[[noreturn]] void refuse(simdjson::error_code code) {
    if (code == simdjson::MEMALLOC) {
        throw std::bad_alloc();
    }
    throw DecodingError::dataCorrupted(std::string("the text is not JSON: ") + reason(code));
}

} // namespace

JSONDocument::Parser& JSONDocument::keptParser() {
    thread_local Parser parser;
    return parser;
}

JSONDocument::JSONDocument(std::string_view text) {
    // A coding that decodes another text while its own is being read finds the kept parser taken.
    if (text.size() <= largestKeptCapacity && !keptParser().isBusy) {
        borrowedParser_ = &keptParser();
    } else {
        ownParser_ = std::make_unique<Parser>();
    }
    Parser& parser = borrowedParser_ != nullptr ? *borrowedParser_ : *ownParser_;
    parse(parser, text);
    document_ = &parser.document;
    parser.isBusy = true;
}

JSONDocument::~JSONDocument() {
    if (borrowedParser_ != nullptr) {
        borrowedParser_->isBusy = false;
    }
}

void JSONDocument::parse(Parser& parser, std::string_view text) {
    const auto attempt = [&parser](std::string_view attempted) {
        const std::size_t capacity =
            attempted.size() > largestKeptCapacity
                ? attempted.size()
                : (std::min)((std::max)(std::bit_ceil(attempted.size()), smallestCapacity), largestKeptCapacity);
        if (parser.parser.capacity() < attempted.size() || parser.parser.capacity() == 0) {
            if (const simdjson::error_code error = parser.parser.allocate(capacity, deepestNesting)) {
                return error;
            }
        }
        if (parser.document.capacity() < attempted.size() || parser.document.capacity() == 0) {
            if (const simdjson::error_code error = parser.document.allocate(capacity)) {
                return error;
            }
            if (capacity > largestKeptCapacity) {
                preferLargePages(parser.document.tape.get(), capacity * sizeof(std::uint64_t));
                preferLargePages(parser.document.string_buf.get(), capacity / 3 * 5);
            }
        }
        return parser.parser.parse_into_document(parser.document, attempted.data(), attempted.size(), false).error();
    };
    simdjson::error_code error = attempt(text);
    if (error == simdjson::NUMBER_ERROR) {
        // The parser gives up on numbers beyond its range, even under keys that nobody asks for.
        if (const std::optional<Data> rewritten = withParsableNumbers(text, standInText)) {
            unrepresentable_ = standIn;
            error = attempt(rewritten->view());
        }
    }
    if (error != simdjson::SUCCESS) {
        refuse(error);
    }
}

} // namespace tovrel::detail
