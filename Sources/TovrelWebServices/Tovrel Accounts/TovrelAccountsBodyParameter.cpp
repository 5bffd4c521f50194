#include <QZFrameworkCoreLogic/StringURLEncoding.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsBodyParameter.hpp>

#include <utility>

namespace tovrel {

namespace {

constexpr std::string_view nameKey = "name";
constexpr std::string_view valueKey = "value";

} // namespace

TovrelAccountsBodyParameter::TovrelAccountsBodyParameter(Name name, std::optional<std::string> value)
    : name_(name), value_(std::move(value)) {}

std::shared_ptr<const TovrelAccountsBodyParameter> TovrelAccountsBodyParameter::make(Name name,
                                                                                     std::optional<std::string> value) {
    return std::shared_ptr<const TovrelAccountsBodyParameter>(new TovrelAccountsBodyParameter(name, std::move(value)));
}

std::string TovrelAccountsBodyParameter::string(const TovrelAccountsBodyParameters& parameters, bool urlEncode) {
    std::string form;
    for (const auto& parameter : parameters) {
        std::string value = parameter->value().value_or("");
        if (urlEncode) {
            value = urlEncodeQueryParameter(value).value_or(value);
        }
        form += form.empty() ? "" : "&";
        form += parameter->name().rawValue();
        form += "=" + value;
    }
    return form;
}

std::shared_ptr<const TovrelAccountsBodyParameter>
Coding<std::shared_ptr<const TovrelAccountsBodyParameter>>::decode(Decoder& decoder) {
    const KeyedDecoder object = decoder.keyed();
    const auto name = TovrelAccountsBodyParameter::Name::fromRawValue(object.decode<std::string>(nameKey));
    if (!name) {
        throw DecodingError::dataCorrupted("The name is no key of a form.");
    }
    return TovrelAccountsBodyParameter::make(*name, object.decodeIfPresent<std::string>(valueKey));
}

void Coding<std::shared_ptr<const TovrelAccountsBodyParameter>>::encode(
    const std::shared_ptr<const TovrelAccountsBodyParameter>& value, Encoder& encoder) {
    KeyedEncoder object = encoder.keyed();
    object.encode(nameKey, std::string(value->name().rawValue()));
    object.encodeIfPresent(valueKey, value->value());
}

} // namespace tovrel
