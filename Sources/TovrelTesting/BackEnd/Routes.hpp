#pragma once

#include <TovrelTesting/BackEnd/RoutePattern.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tovrel::testing {

/// The scripted routes. Any thread adds, the server's thread asks; no lock is held while a handler runs.
class Routes {
public:
    /// An empty host means every host.
    void add(std::string_view host, std::string_view method, std::string_view pattern, RouteHandler handler);

    /// Finds the route, fills in the request's parameters and asks the handler.
    ScriptedResponse respond(ReceivedRequest& request) const;

private:
    struct Route {
        std::string host;
        std::string method;
        RoutePattern pattern;
        RouteHandler handler;

        Route(std::string_view host, std::string_view method, std::string_view pattern, RouteHandler handler);
        bool accepts(const ReceivedRequest& request) const;
    };

    mutable std::mutex mutex_;
    std::vector<std::shared_ptr<const Route>> routes_;
};

} // namespace tovrel::testing
