#pragma once

#include <Platform/Coding/Data.hpp>

#include <simdjson.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace tovrel::detail {

/// The parsed form of one JSON text, which need not outlive the construction. Throws `DecodingError`.
class JSONDocument {
public:
    /// At least `Data::padding` bytes are readable behind the text.
    explicit JSONDocument(std::string_view text);
    JSONDocument(const JSONDocument&) = delete;
    JSONDocument& operator=(const JSONDocument&) = delete;
    ~JSONDocument();

    /// The parser's tape: one word an entry, tag in the upper byte.
    const std::uint64_t* tape() const noexcept { return document_->tape.get(); }
    /// The strings that the tape refers to, each behind its length.
    const std::uint8_t* strings() const noexcept { return document_->string_buf.get(); }
    /// What stands on the tape for a number beyond the range of a double.
    std::optional<double> unrepresentable() const noexcept { return unrepresentable_; }

private:
    struct Parser {
        simdjson::dom::parser parser;
        simdjson::dom::document document;
        bool isBusy = false;
    };

    static Parser& keptParser();
    void parse(Parser& parser, std::string_view text);

    std::unique_ptr<Parser> ownParser_;
    Parser* borrowedParser_ = nullptr;
    const simdjson::dom::document* document_ = nullptr;
    std::optional<double> unrepresentable_;
};

} // namespace tovrel::detail
