#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/System/Export.hpp>
#include <Platform/System/RawRepresentable.hpp>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel {

class TovrelAccountsBodyParameter;

/// The parameters of a form, in order.
using TovrelAccountsBodyParameters = std::vector<std::shared_ptr<const TovrelAccountsBodyParameter>>;

/// One parameter of the form in the body of a request to the accounts server. Immutable, hence thread-safe.
class TOVREL_EXPORT TovrelAccountsBodyParameter {
public:
    /// The keys that forms have; the raw value is the key.
    class TOVREL_EXPORT Name : public RawRepresentable<Name> {
    public:
        enum Value {
            clientId,
            clientSecret,
            subjectIssuer,
            subjectToken,
            subjectTokenType,
            scope,
            grantType,
            userProfile,
            refreshToken
        };

        static constexpr std::array<std::string_view, 9> rawValues{
            "client_id", "client_secret", "subject_issuer", "subject_token", "subject_token_type",
            "scope",     "grant_type",    "user_profile",   "refresh_token"};

        /* implicit */ constexpr Name(Value value) : value_(value) {}

        /// For `switch`.
        [[nodiscard]] constexpr Value value() const { return value_; }

        friend constexpr bool operator==(Name a, Name b) { return a.value_ == b.value_; }

    private:
        Value value_;
    };

    /// @param value Unencoded; an absent one stands for an empty one.
    static std::shared_ptr<const TovrelAccountsBodyParameter> make(Name name, std::optional<std::string> value);

    [[nodiscard]] Name name() const { return name_; }
    [[nodiscard]] const std::optional<std::string>& value() const { return value_; }

    /// The parameters as a form (application/x-www-form-urlencoded), keys as they are.
    ///
    /// @param urlEncode Whether values are percent-encoded; one that is not UTF-8 stays as it is.
    [[nodiscard]] static std::string string(const TovrelAccountsBodyParameters& parameters, bool urlEncode);

private:
    TovrelAccountsBodyParameter(Name name, std::optional<std::string> value);

    Name name_;
    std::optional<std::string> value_;
};

/// How a parameter is coded: an object of "name", the form's key, and "value", which may be missing.
template <>
struct TOVREL_EXPORT Coding<std::shared_ptr<const TovrelAccountsBodyParameter>> {
    /// @throws DecodingError dataCorrupted for a name that is no key; else as records do.
    static std::shared_ptr<const TovrelAccountsBodyParameter> decode(Decoder& decoder);
    static void encode(const std::shared_ptr<const TovrelAccountsBodyParameter>& value, Encoder& encoder);
};

} // namespace tovrel
