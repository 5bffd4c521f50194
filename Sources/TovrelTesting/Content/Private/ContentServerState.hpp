#pragma once

#include <TovrelTesting/BackEnd/Routes.hpp>
#include <TovrelTesting/Content/ContentServer.hpp>

#include <mutex>

namespace tovrel::testing {

/// What the resources of a content server share.
class ContentServerState {
public:
    ContentServerState(std::shared_ptr<const AccountsServer> accounts, const ContentServerOptions& serverOptions);

    /// Checks the request's access token and lets the handler answer.
    ScriptedResponse answerIfAllowed(const ReceivedRequest& request, const ContentHandler& handler);

    void count(std::uint64_t ContentServerCounts::*what);
    ContentServerCounts counts() const;

    const ContentServerOptions options;
    Routes apiRoutes;
    Routes cdnRoutes;

private:
    const std::shared_ptr<const AccountsServer> accounts_;
    mutable std::mutex mutex_;
    ContentServerCounts counts_;
};

} // namespace tovrel::testing
