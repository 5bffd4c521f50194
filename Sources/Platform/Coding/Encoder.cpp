#include <Platform/Coding/Encoder.hpp>
#include <Platform/System/FatalError.hpp>

#include <string>
#include <utility>

namespace tovrel {

namespace {

// The operation writes what lies at `step`: its failure is told from one level up.
template <class Step, class Operation>
void atStep(Step step, Operation operation) {
    try {
        operation();
    } catch (const EncodingError& error) {
        CodingPath path;
        path.emplace_back(std::move(step));
        path.insert(path.end(), error.path().begin(), error.path().end());
        throw EncodingError::invalidValue(error.description(), std::move(path));
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
    atStep(std::string(key), [&] {
        context_->key(key);
        context_->encode(type, value);
    });
}

void KeyedEncoder::nested(std::string_view key, const std::function<void(Encoder&)>& write) {
    atStep(std::string(key), [&] {
        context_->key(key);
        encodeByHand(*context_, write);
    });
}

void UnkeyedEncoder::encode(const detail::TypeTable& type, const void* value) {
    atStep(count_, [&] { context_->encode(type, value); });
    ++count_;
}

void UnkeyedEncoder::nested(const std::function<void(Encoder&)>& write) {
    atStep(count_, [&] { encodeByHand(*context_, write); });
    ++count_;
}

} // namespace tovrel
