#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/Services/TovrelEnvironment.hpp>

#include <concepts>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace tovrel {

/// An endpoint: which host it is (no scheme, no path, no trailing slash) and for which stage.
template <class T>
concept WebServiceEnvironment = requires(const T& environment) {
    { environment.domain() } -> std::convertible_to<std::string_view>;
    { environment.environment() } -> std::same_as<TovrelEnvironment>;
};

/// The endpoints that follow from the stage alone: one of them for each stage, by name.
template <class TovrelWebServiceEnvironment>
class EnvironmentInstantiable {
public:
    [[nodiscard]] static TovrelWebServiceEnvironment development() {
        return TovrelWebServiceEnvironment(TovrelEnvironment::development);
    }
    [[nodiscard]] static TovrelWebServiceEnvironment test() {
        return TovrelWebServiceEnvironment(TovrelEnvironment::test);
    }
    [[nodiscard]] static TovrelWebServiceEnvironment production() {
        return TovrelWebServiceEnvironment(TovrelEnvironment::production);
    }

    friend bool operator==(const EnvironmentInstantiable&, const EnvironmentInstantiable&) = default;
};

/// The JSON API.
class TOVREL_EXPORT TovrelApiEnvironment : public EnvironmentInstantiable<TovrelApiEnvironment> {
public:
    explicit TovrelApiEnvironment(TovrelEnvironment environment) : environment_(environment) {}

    [[nodiscard]] TovrelEnvironment environment() const { return environment_; }
    [[nodiscard]] std::string_view domain() const;

    friend bool operator==(const TovrelApiEnvironment&, const TovrelApiEnvironment&) = default;

private:
    TovrelEnvironment environment_;
};

/// The content-delivery network.
class TOVREL_EXPORT TovrelCdnEnvironment : public EnvironmentInstantiable<TovrelCdnEnvironment> {
public:
    explicit TovrelCdnEnvironment(TovrelEnvironment environment) : environment_(environment) {}

    [[nodiscard]] TovrelEnvironment environment() const { return environment_; }
    [[nodiscard]] std::string_view domain() const;

    friend bool operator==(const TovrelCdnEnvironment&, const TovrelCdnEnvironment&) = default;

private:
    TovrelEnvironment environment_;
};

/// The accounts (OpenID Connect) server.
class TOVREL_EXPORT TovrelAccountsEnvironment : public EnvironmentInstantiable<TovrelAccountsEnvironment> {
public:
    explicit TovrelAccountsEnvironment(TovrelEnvironment environment) : environment_(environment) {}

    [[nodiscard]] TovrelEnvironment environment() const { return environment_; }
    [[nodiscard]] std::string_view domain() const;

    friend bool operator==(const TovrelAccountsEnvironment&, const TovrelAccountsEnvironment&) = default;

private:
    TovrelEnvironment environment_;
};

/// Any HTTP host; it does not depend on the stage.
class TOVREL_EXPORT TovrelHttpEnvironment {
public:
    TovrelHttpEnvironment(TovrelEnvironment environment, std::string domain)
        : environment_(environment), domain_(std::move(domain)) {}

    [[nodiscard]] TovrelEnvironment environment() const { return environment_; }
    [[nodiscard]] std::string_view domain() const { return domain_; }

    friend bool operator==(const TovrelHttpEnvironment&, const TovrelHttpEnvironment&) = default;

private:
    TovrelEnvironment environment_;
    std::string domain_;
};

} // namespace tovrel
