#include <TovrelTesting/BackEnd/Routes.hpp>

#include <ranges>
#include <utility>

namespace tovrel::testing {

namespace {

std::string_view withoutPort(std::string_view authority) {
    const std::size_t colon = authority.rfind(':');
    const bool hasPort = colon != std::string_view::npos && authority.find(']', colon) == std::string_view::npos;
    return hasPort ? authority.substr(0, colon) : authority;
}

ScriptedResponse ask(const RouteHandler& handler, const ReceivedRequest& request) {
    try {
        return handler(request);
    } catch (...) {
        return ScriptedResponse::json(R"({"error":"The route's handler failed."})", 500);
    }
}

} // namespace

Routes::Route::Route(std::string_view routeHost, std::string_view routeMethod, std::string_view routePattern,
                     RouteHandler routeHandler)
    : host(routeHost), method(routeMethod), pattern(routePattern), handler(std::move(routeHandler)) {}

bool Routes::Route::accepts(const ReceivedRequest& request) const {
    const bool fitsMethod = method == "*" || method == request.method || (method == "GET" && request.method == "HEAD");
    return fitsMethod && (host.empty() || isSameHeaderName(host, withoutPort(request.host)));
}

void Routes::add(std::string_view host, std::string_view method, std::string_view pattern, RouteHandler handler) {
    auto route = std::make_shared<const Route>(host, method, pattern, std::move(handler));
    const std::lock_guard lock(mutex_);
    routes_.push_back(std::move(route));
}

ScriptedResponse Routes::respond(ReceivedRequest& request) const {
    std::shared_ptr<const Route> found;
    {
        const std::lock_guard lock(mutex_);
        for (const auto& route : std::views::reverse(routes_)) {
            if (!route->accepts(request)) {
                continue;
            }
            if (auto parameters = route->pattern.match(request.path())) {
                request.parameters = std::move(*parameters);
                found = route;
                break;
            }
        }
    }
    return found ? ask(found->handler, request) : ScriptedResponse::json(R"({"error":"There is no such route."})", 404);
}

} // namespace tovrel::testing
