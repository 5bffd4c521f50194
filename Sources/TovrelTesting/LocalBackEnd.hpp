#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelTesting/BackEndStatistics.hpp>
#include <TovrelTesting/Fault.hpp>
#include <TovrelTesting/LocalBackEndError.hpp>
#include <TovrelTesting/LocalBackEndOptions.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>
#include <TovrelTesting/ScriptedResponse.hpp>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::testing {

class ScratchDirectory;
class Server;

/// Answers a request. Runs on the back end's thread, one at a time: it must not block, and it may call the back end.
/// What it throws becomes a response with status 500.
using RouteHandler = std::function<ScriptedResponse(const ReceivedRequest&)>;

/// A scriptable web server inside the process, for tests against real sockets: TLS with a throw-away certificate
/// authority, HTTP/1.1 (RFC 9112) and HTTP/2 (RFC 9113), on a free port of 127.0.0.1.
///
/// It serves from one thread of its own. Every member may be called from any thread; the destructor alone must not run
/// on the back end's thread, that is, in a handler. Destruction ends every connection at once, stalled exchanges
/// included, and waits for the thread.
class TOVREL_EXPORT LocalBackEnd {
public:
    /// Starts a back end; it accepts connections when this returns. Throws `LocalBackEndError`, and
    /// `std::filesystem::filesystem_error` if no temporary directory can be made.
    static std::unique_ptr<LocalBackEnd> start(const LocalBackEndOptions& options = LocalBackEndOptions());

    ~LocalBackEnd();
    LocalBackEnd(const LocalBackEnd&) = delete;
    LocalBackEnd& operator=(const LocalBackEnd&) = delete;

    /// The port that speaks TLS.
    std::uint16_t port() const noexcept;

    /// The port without TLS, or 0 where the options ask for none.
    std::uint16_t plainPort() const noexcept;

    /// The address of a target such as "/items?limit=2", for one of the certificate's host names.
    std::string url(std::string_view target, std::string_view host = "localhost") const;

    /// The same address at the port without TLS.
    std::string plainUrl(std::string_view target, std::string_view host = "localhost") const;

    /// The certificate that a client has to trust, in PEM.
    const std::string& certificateAuthorityPem() const noexcept;

    /// The pin of the server's public key: its SHA-256 in Base64 (RFC 7469 section 2.4).
    const std::string& keyPin() const noexcept;

    /// A directory for what clients keep of the responses; it goes with the back end.
    const std::filesystem::path& cacheDirectory() const noexcept;

    /// Answers requests for a path at any host.
    ///
    /// A pattern is a path in which `{name}` stands for one segment that is not empty, and `{name...}` at the end for
    /// all that is left, empty included; the handler finds them in `ReceivedRequest::parameters`. The method "*" means
    /// any; a HEAD request also fits a route for GET. Of several fitting routes the one added last answers, so a test
    /// may override what a set-up scripted. Without one the answer is 404 with a JSON body.
    void on(std::string_view method, std::string_view pattern, RouteHandler handler);

    /// Answers requests for a path at one host, given without a port and compared without regard to case.
    void onHost(std::string_view host, std::string_view method, std::string_view pattern, RouteHandler handler);

    /// Scripts something to go wrong.
    void inject(Fault fault, FaultSelector selector = FaultSelector::next());

    /// Forgets the faults that have not struck.
    void clearFaults();

    /// Lets all stalled exchanges go on.
    void releaseStalled();

    /// Ends all connections that are open now, as a server does that restarts: in order, whatever they are doing.
    void closeConnections();

    /// The recorded requests in the order in which they were complete.
    std::vector<ReceivedRequest> requests() const;

    /// Forgets the recorded requests.
    void clearRequests();

    /// Waits until that many requests are recorded and returns all there are, after the deadline perhaps fewer.
    std::vector<ReceivedRequest> waitForRequests(std::size_t count, std::chrono::milliseconds deadline) const;

    BackEndStatistics statistics() const;

    /// Waits until the condition holds or the deadline passes, and returns the statistics of that moment. The condition
    /// runs on the caller's thread and must not call the back end.
    BackEndStatistics waitUntil(const std::function<bool(const BackEndStatistics&)>& condition,
                                std::chrono::milliseconds deadline) const;

private:
    explicit LocalBackEnd(std::unique_ptr<Server> server);

    std::unique_ptr<const ScratchDirectory> cacheDirectory_;
    std::unique_ptr<Server> server_;
};

} // namespace tovrel::testing
