#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelWebServices/SignIn/AuthorizationError.hpp>
#include <TovrelWebServices/SignIn/Web/Private/UserRecord.hpp>

#include <tuple>
#include <utility>

namespace tovrel::detail {

namespace {

struct NameInRecord {
    std::optional<std::string> firstName;
    std::optional<std::string> lastName;

    NameInRecord() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&NameInRecord::firstName, "firstName">{}, Field<&NameInRecord::lastName, "lastName">{}};
    }
};

struct Record {
    std::optional<NameInRecord> name;
    std::optional<std::string> email;

    Record() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Record::name, "name">{}, Field<&Record::email, "email">{}};
    }
};

} // namespace

UserRecord UserRecord::parse(std::string_view json) {
    try {
        auto record = JSONDecoder().decode<Record>(Data(json));
        UserRecord user;
        if (record.name) {
            user.name.emplace(std::move(record.name->firstName), std::move(record.name->lastName));
        }
        user.email = std::move(record.email);
        return user;
    } catch (const DecodingError&) {
        throw AuthorizationError::invalidResponse();
    }
}

} // namespace tovrel::detail
