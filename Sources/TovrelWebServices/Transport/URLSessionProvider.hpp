#pragma once

#include <Platform/System/Export.hpp>
#include <Platform/URLLoading/URLSession.hpp>
#include <TovrelWebServices/Transport/WebRequestCacheDefinition.hpp>

#include <memory>

namespace tovrel {

/// Where an executor's session comes from. Implementations are thread-safe.
class TOVREL_EXPORT URLSessionProvider {
public:
    virtual ~URLSessionProvider();

    /// The session to use now.
    [[nodiscard]] virtual std::shared_ptr<URLSession> session() const = 0;

    /// Replaces the session by one whose response cache has these sizes.
    virtual void updateCache(const WebRequestCacheDefinition& definition) = 0;

protected:
    URLSessionProvider();
};

} // namespace tovrel
