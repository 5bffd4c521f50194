#pragma once

#include <Platform/Coding/Coding.hpp>
#include <QZFrameworkCoreLogic/CacheItemConfiguration.hpp>

#include <concepts>
#include <memory>

namespace tovrel {

/// What a cache can keep: a value with a coding that says when it was made, which the cache may change, and how it is
/// to be kept.
template <class T>
concept Cacheable = Codable<T> && requires(T& item, const T& constItem, Date now) {
    { constItem.creationDate } -> std::convertible_to<Date>;
    item.creationDate = now;
    { constItem.cacheConfiguration } -> std::convertible_to<std::shared_ptr<const CacheItemConfiguration>>;
};

} // namespace tovrel
