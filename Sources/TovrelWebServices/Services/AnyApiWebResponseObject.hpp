#pragma once

#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/System/Export.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/Services/ApiWebResponseObject.hpp>

#include <memory>
#include <typeindex>
#include <utility>

namespace tovrel {

/// An `ApiWebResponseObject` of a payload type that only its maker and its taker know, for implementations of services.
class TOVREL_EXPORT AnyApiWebResponseObject {
public:
    template <class T>
    explicit AnyApiWebResponseObject(ApiWebResponseObject<T> envelope)
        : AnyApiWebResponseObject(new ApiWebResponseObject<T>(std::move(envelope))) {}

    [[nodiscard]] const ApiResponseMeta& meta() const { return *meta_; }

    [[nodiscard]] std::type_index payloadType() const { return payloadType_; }

    /// The envelope. Another payload type than the maker's is a programming error and stops the process.
    template <Codable T>
    [[nodiscard]] ApiWebResponseObject<T> take() && {
        if (payloadType_ != typeid(T)) {
            fatalError("The envelope is taken as one of another payload type.");
        }
        return std::move(*static_cast<ApiWebResponseObject<T>*>(envelope_.get()));
    }

private:
    template <class T>
    explicit AnyApiWebResponseObject(ApiWebResponseObject<T>* envelope)
        : payloadType_(typeid(T)),
          envelope_(envelope, [](void* object) { delete static_cast<ApiWebResponseObject<T>*>(object); }),
          meta_(&envelope->meta) {}

    std::type_index payloadType_;
    std::unique_ptr<void, void (*)(void*)> envelope_;
    const ApiResponseMeta* meta_;
};

/// The payload type that a caller has chosen, for implementations of services.
class TOVREL_EXPORT ApiPayloadType {
public:
    template <Codable T>
    [[nodiscard]] static ApiPayloadType of() {
        return ApiPayloadType(typeid(T), [](const Data& json, const JSONDecoder& decoder) {
            return AnyApiWebResponseObject(decoder.decode<ApiWebResponseObject<T>>(json));
        });
    }

    [[nodiscard]] std::type_index type() const { return type_; }

    /// The envelope that `json` holds.
    ///
    /// @throws what the decoder throws.
    [[nodiscard]] AnyApiWebResponseObject decode(const Data& json, const JSONDecoder& decoder) const {
        return decode_(json, decoder);
    }

    friend bool operator==(const ApiPayloadType& a, const ApiPayloadType& b) { return a.type_ == b.type_; }

private:
    using Decode = AnyApiWebResponseObject (*)(const Data& json, const JSONDecoder& decoder);

    ApiPayloadType(std::type_index payload, Decode function) : type_(payload), decode_(function) {}

    std::type_index type_;
    Decode decode_;
};

} // namespace tovrel
