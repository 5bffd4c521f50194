#pragma once

#include <Platform/Coding/Date.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelTesting/Accounts/AccountsServer.hpp>
#include <TovrelTesting/Content/ContentFile.hpp>
#include <TovrelTesting/Envelope.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::testing {

class ContentServerState;

/// Answers a request of somebody who is logged in; see `RouteHandler` for where it runs.
using ContentHandler = std::function<ScriptedResponse(const ReceivedRequest&, const AccountsServerSession&)>;

/// How a content server is set up.
struct TOVREL_EXPORT ContentServerOptions {
    /// What an access token must allow.
    std::vector<std::string> requiredScopes;
    /// How many elements of a collection a page has where the request does not say, and how many it may ask for.
    std::int64_t defaultPageSize = 20;
    std::int64_t largestPageSize = 100;
    /// The time in `Date` lines. May be called from any thread.
    std::function<Date()> clock = &Date::now;

    ContentServerOptions();
};

/// How often what happened at a content server.
struct TOVREL_EXPORT ContentServerCounts {
    std::uint64_t requests = 0;
    /// Requests without an access token that is good.
    std::uint64_t unauthorized = 0;
    /// Requests for files that the client already had.
    std::uint64_t notModified = 0;

    ContentServerCounts();

    bool operator==(const ContentServerCounts&) const = default;
};

/// The API and the content-delivery network for a local back end. Both want an access token of an accounts server.
///
/// What is missing or refused is told in an envelope: 401 without a good token, 403 where the token does not allow
/// enough, 404 for unknown resources. Thread-safe; what it is attached to keeps its state alive.
class TOVREL_EXPORT ContentServer {
public:
    /// A server without resources that nobody reaches yet.
    static std::shared_ptr<ContentServer> make(std::shared_ptr<const AccountsServer> accounts,
                                               const ContentServerOptions& options = ContentServerOptions());

    ~ContentServer();
    ContentServer(const ContentServer&) = delete;
    ContentServer& operator=(const ContentServer&) = delete;

    /// Lets these hosts of the back end be the API. Every path of theirs is the API's, unless a route added later says
    /// otherwise.
    void attachApi(LocalBackEnd& backEnd, const std::vector<std::string>& hosts);

    /// Lets these hosts of the back end be the content-delivery network.
    void attachCdn(LocalBackEnd& backEnd, const std::vector<std::string>& hosts);

    /// Answers requests to the API; method and pattern are those of `LocalBackEnd::on`.
    void onApi(std::string_view method, std::string_view pattern, ContentHandler handler);

    /// Lets a path of the API be a list of elements, each of them JSON, which `GET` reads page by page: "limit" in the
    /// query is the size of a page, "next" is what the page before said. Replaces an earlier list.
    void setCollection(std::string_view path, std::vector<std::string> elements);

    /// Answers requests to the content-delivery network.
    void onCdn(std::string_view method, std::string_view pattern, ContentHandler handler);

    /// Lets a path of the content-delivery network be a file, in place of an earlier one. Conditional requests (RFC
    /// 9110 section 13) are answered with 304 where nothing changed.
    void setFile(std::string_view path, ContentFile file);

    ContentServerCounts counts() const;

private:
    ContentServer(std::shared_ptr<const AccountsServer> accounts, const ContentServerOptions& options);

    std::shared_ptr<ContentServerState> state_;
};

} // namespace tovrel::testing
