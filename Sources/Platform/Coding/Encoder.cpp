#include <Platform/Coding/Encoder.hpp>
#include <Platform/Coding/Private/EncodingEngine.hpp>
#include <Platform/System/FatalError.hpp>

#include <string>
#include <utility>

namespace tovrel {

namespace detail {

void rethrowBelow(CodingKey step, const EncodingError& error) {
    CodingPath path;
    path.push_back(std::move(step));
    path.insert(path.end(), error.path().begin(), error.path().end());
    throw EncodingError::invalidValue(error.description(), std::move(path));
}

} // namespace detail

namespace {

// The operation writes what lies at `step`: its failure is told from one level up.
template <class Operation>
void atStep(CodingKey step, Operation operation) {
    try {
        operation();
    } catch (const EncodingError& error) {
        detail::rethrowBelow(std::move(step), error);
    }
}

void encodeByHand(detail::EncodingContext& context, const std::function<void(Encoder&)>& write) {
    Encoder encoder(context);
    write(encoder);
    encoder.finish();
}

} // namespace

void Encoder::open(Form form) {
    if (form_ != Form::none) {
        fatalError("a hand-written coding wrote its value twice");
    }
    form_ = form;
}

KeyedEncoder Encoder::keyed() {
    open(Form::object);
    context_->beginObject();
    return KeyedEncoder(*context_);
}

UnkeyedEncoder Encoder::unkeyed() {
    open(Form::list);
    context_->beginList();
    return UnkeyedEncoder(*context_);
}

void Encoder::null() {
    open(Form::single);
    context_->encodeNull();
}

void Encoder::finish() {
    switch (form_) {
    case Form::none:
        context_->beginObject();
        context_->endObject();
        break;
    case Form::object:
        context_->endObject();
        break;
    case Form::list:
        context_->endList();
        break;
    case Form::single:
        break;
    }
}

void KeyedEncoder::encode(std::string_view key, const detail::TypeTable& type, const void* value) {
    atStep(CodingKey(std::string(key)), [&] {
        context_->key(key);
        context_->encode(type, value);
    });
}

void KeyedEncoder::nested(std::string_view key, const std::function<void(Encoder&)>& write) {
    atStep(CodingKey(std::string(key)), [&] {
        context_->key(key);
        encodeByHand(*context_, write);
    });
}

void UnkeyedEncoder::encode(const detail::TypeTable& type, const void* value) {
    atStep(CodingKey(count_), [&] { context_->encode(type, value); });
    ++count_;
}

void UnkeyedEncoder::nested(const std::function<void(Encoder&)>& write) {
    atStep(CodingKey(count_), [&] { encodeByHand(*context_, write); });
    ++count_;
}

} // namespace tovrel
