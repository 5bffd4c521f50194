#include <Platform/Coding/Decoder.hpp>

#include <utility>

namespace tovrel {

namespace {

[[noreturn]] void rethrowBehind(CodingPath path, const DecodingError& error) {
    path.insert(path.end(), error.path().begin(), error.path().end());
    throw DecodingError(error.kind(), error.description(), std::move(path));
}

template <class Operation>
auto withPath(const CodingPath& path, Operation operation) {
    try {
        return operation();
    } catch (const DecodingError& error) {
        rethrowBehind(path, error);
    }
}

template <class Step>
CodingPath extended(const CodingPath& path, Step step) {
    CodingPath longer = path;
    longer.emplace_back(std::move(step));
    return longer;
}

} // namespace

KeyedDecoder Decoder::keyed() const {
    return KeyedDecoder(*context_, node_, path_);
}

UnkeyedDecoder Decoder::unkeyed() const {
    return UnkeyedDecoder(*context_, node_, path_);
}

SingleValueDecoder Decoder::singleValue() const {
    return SingleValueDecoder(*context_, node_, path_);
}

KeyedDecoder::KeyedDecoder(detail::DecodingContext& context, detail::DecodingNode node, CodingPath path)
    : context_(&context), node_(node), path_(std::move(path)) {
    withPath(path_, [&] { return context.find(node, std::string_view()); });
}

std::vector<std::string> KeyedDecoder::allKeys() const {
    return context_->keys(node_);
}

bool KeyedDecoder::contains(std::string_view key) const {
    return context_->find(node_, key).has_value();
}

bool KeyedDecoder::isNull(std::string_view key) const {
    const auto node = context_->find(node_, key);
    return node && context_->isNull(*node);
}

detail::DecodingNode KeyedDecoder::require(std::string_view key) const {
    const auto node = context_->find(node_, key);
    if (!node) {
        throw DecodingError::keyNotFound(std::string(key), context_->keyNotFound(key), path_);
    }
    return *node;
}

void KeyedDecoder::decode(std::string_view key, const detail::TypeTable& type, void* value) const {
    const detail::DecodingNode node = require(key);
    try {
        context_->decode(node, type, value);
    } catch (const DecodingError& error) {
        rethrowBehind(extended(path_, std::string(key)), error);
    }
}

Decoder KeyedDecoder::nested(std::string_view key) const {
    return Decoder(*context_, require(key), extended(path_, std::string(key)));
}

UnkeyedDecoder::UnkeyedDecoder(detail::DecodingContext& context, detail::DecodingNode node, CodingPath path)
    : context_(&context), elements_(withPath(path, [&] { return context.elements(node); })), path_(std::move(path)) {}

bool UnkeyedDecoder::isNull() const {
    return !isAtEnd() && context_->isNull(elements_[index_]);
}

detail::DecodingNode UnkeyedDecoder::require() const {
    if (isAtEnd()) {
        throw DecodingError::valueNotFound("the list has no further element", extended(path_, index_));
    }
    return elements_[index_];
}

void UnkeyedDecoder::decode(const detail::TypeTable& type, void* value) {
    const detail::DecodingNode node = require();
    try {
        context_->decode(node, type, value);
    } catch (const DecodingError& error) {
        rethrowBehind(extended(path_, index_), error);
    }
    ++index_;
}

Decoder UnkeyedDecoder::nested() {
    const detail::DecodingNode node = require();
    return Decoder(*context_, node, extended(path_, index_++));
}

void SingleValueDecoder::decode(const detail::TypeTable& type, void* value) const {
    withPath(path_, [&] { context_->decode(node_, type, value); });
}

} // namespace tovrel
