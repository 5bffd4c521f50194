#include <TovrelTesting/Content/ContentServer.hpp>
#include <TovrelTesting/Content/Private/ContentServerState.hpp>
#include <TovrelTesting/Content/Private/FileAnswer.hpp>
#include <TovrelTesting/Content/Private/PageAnswer.hpp>

#include <utility>

namespace tovrel::testing {

namespace {

void attach(LocalBackEnd& backEnd, const std::vector<std::string>& hosts,
            const std::shared_ptr<ContentServerState>& state, Routes ContentServerState::*routes) {
    for (const std::string& host : hosts) {
        backEnd.onHost(host, "*", "/{path...}", [state, routes](const ReceivedRequest& request) {
            ReceivedRequest own = request;
            return ((*state).*routes).respond(own);
        });
    }
}

/// The state owns the routes and outlives the handlers in them, so they must not own the state.
RouteHandler guarded(ContentServerState& state, ContentHandler handler) {
    return [&state, handler = std::move(handler)](const ReceivedRequest& request) {
        return state.answerIfAllowed(request, handler);
    };
}

} // namespace

ContentServerOptions::ContentServerOptions() = default;

ContentServerCounts::ContentServerCounts() = default;

ContentServer::ContentServer(std::shared_ptr<const AccountsServer> accounts, const ContentServerOptions& options)
    : state_(std::make_shared<ContentServerState>(std::move(accounts), options)) {
    const auto isMissing = [](const ReceivedRequest&, const AccountsServerSession&) {
        return refusalEnvelope(404, "not_found", "There is no such resource");
    };
    onApi("*", "/{path...}", isMissing);
    onCdn("*", "/{path...}", isMissing);
}

ContentServer::~ContentServer() = default;

std::shared_ptr<ContentServer> ContentServer::make(std::shared_ptr<const AccountsServer> accounts,
                                                   const ContentServerOptions& options) {
    return std::shared_ptr<ContentServer>(new ContentServer(std::move(accounts), options));
}

void ContentServer::attachApi(LocalBackEnd& backEnd, const std::vector<std::string>& hosts) {
    attach(backEnd, hosts, state_, &ContentServerState::apiRoutes);
}

void ContentServer::attachCdn(LocalBackEnd& backEnd, const std::vector<std::string>& hosts) {
    attach(backEnd, hosts, state_, &ContentServerState::cdnRoutes);
}

void ContentServer::onApi(std::string_view method, std::string_view pattern, ContentHandler handler) {
    state_->apiRoutes.add({}, method, pattern, guarded(*state_, std::move(handler)));
}

void ContentServer::setCollection(std::string_view path, std::vector<std::string> elements) {
    const PageSizes sizes(state_->options.defaultPageSize, state_->options.largestPageSize);
    onApi("GET", path,
          [elements = std::move(elements), sizes](const ReceivedRequest& request, const AccountsServerSession&) {
              return pageAnswer(elements, sizes, request);
          });
}

void ContentServer::onCdn(std::string_view method, std::string_view pattern, ContentHandler handler) {
    state_->cdnRoutes.add({}, method, pattern, guarded(*state_, std::move(handler)));
}

void ContentServer::setFile(std::string_view path, ContentFile file) {
    ContentServerState& state = *state_;
    onCdn("GET", path, [&state, file = std::move(file)](const ReceivedRequest& request, const AccountsServerSession&) {
        ScriptedResponse answer = fileAnswer(file, request, state.options.clock());
        if (answer.status == 304) {
            state.count(&ContentServerCounts::notModified);
        }
        return answer;
    });
}

ContentServerCounts ContentServer::counts() const {
    return state_->counts();
}

} // namespace tovrel::testing
