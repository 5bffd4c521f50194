#pragma once

#include <Platform/Coding/Coding.hpp>
#include <Platform/System/FatalError.hpp>
#include <QZFrameworkCoreLogic/Cacheable.hpp>
#include <QZFrameworkCoreLogic/CacheItemConfiguration.hpp>
#include <TovrelWebServices/Services/ApiWebResponseObject.hpp>

#include <memory>
#include <utility>

namespace tovrel {

/// An envelope that a host keeps in a cache of its own. The API and CDN services themselves always ask the server.
template <Codable T>
struct CacheableApiResponse {
    ApiWebResponseObject<T> response;
    /// The cache may set it anew.
    Date creationDate;
    /// Never null.
    std::shared_ptr<const CacheItemConfiguration> cacheConfiguration;

    CacheableApiResponse() : cacheConfiguration(std::make_shared<const CacheItemConfiguration>()) {}
    CacheableApiResponse(ApiWebResponseObject<T> cachedResponse, Date creation,
                         std::shared_ptr<const CacheItemConfiguration> configuration)
        : response(std::move(cachedResponse)), creationDate(creation), cacheConfiguration(std::move(configuration)) {
        if (!cacheConfiguration) {
            fatalError("A cacheable response needs a cache configuration.");
        }
    }
};

/// An object of the envelope, the date in the coder's form, and the configuration; all three are required.
template <class T>
struct Coding<CacheableApiResponse<T>> {
    static CacheableApiResponse<T> decode(Decoder& decoder) {
        const KeyedDecoder members = decoder.keyed();
        auto response = members.template decode<ApiWebResponseObject<T>>("response");
        const auto creationDate = members.template decode<Date>("creationDate");
        auto configuration = std::make_shared<const CacheItemConfiguration>(
            members.template decode<CacheItemConfiguration>("cacheConfiguration"));
        return CacheableApiResponse<T>(std::move(response), creationDate, std::move(configuration));
    }

    static void encode(const CacheableApiResponse<T>& item, Encoder& encoder) {
        KeyedEncoder members = encoder.keyed();
        members.encode("response", item.response);
        members.encode("creationDate", item.creationDate);
        members.encode("cacheConfiguration", *item.cacheConfiguration);
    }
};

} // namespace tovrel
