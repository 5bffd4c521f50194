#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <TovrelWebServices/Services/TovrelDomainWebService.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>

#include <memory>
#include <string_view>
#include <utility>

namespace tovrel {

/// Fetches content from the content-delivery network: files as they are, or the envelopes of JSON answers.
///
/// Every form of `execute` may be awaited from any executor; a large envelope is decoded on the pool. The request gains
/// the header "Authorization", so one call at a time may execute it.
class TOVREL_EXPORT CdnWebService : public TovrelDomainWebService {
public:
    using Request = std::shared_ptr<WebRequest<RequestType::CDN>>;

    ~CdnWebService() override;

    [[nodiscard]] virtual TovrelCdnEnvironment environment() const = 0;

    /// A request to the CDN that accepts deflate and gzip, with 60 seconds of timeout.
    ///
    /// @param resourceUrl The path below the host, without a leading slash.
    /// @throws WebServiceError invalidUrl
    [[nodiscard]] Request buildRequest(std::string_view resourceUrl, HttpMethod method) const;

    /// The response as it came, whatever its status, unless that is 401, and with or without a body.
    ///
    /// @throws WebServiceError unauthorized (401); the account is logged out then.
    /// @throws CancellationError when a back-off is cancelled.
    /// @throws what the accounts service's login or logout throws, or its executor once the retries are spent.
    [[nodiscard]] virtual Async<WebResponse> execute(Request request) const = 0;

    /// The envelope with the response that it came in. JSON is decoded by the request's custom decoding strategy if it
    /// has one, else with keys from snake case and dates from milliseconds since 1970.
    ///
    /// @throws TovrelDomainServiceError when the server refuses with an envelope.
    /// @throws WebServiceError invalidServerResponse (no envelope of a `T`, at any status but 401, or no body).
    /// @throws as the form without a payload type.
    template <Codable T>
    [[nodiscard]] Async<ResponseObjectWebResponse<ApiWebResponseObject<T>>> execute(Request request) const {
        return response<T>(executeAny(std::move(request), ApiPayloadType::of<T>()));
    }

    /// The envelope alone.
    ///
    /// @throws as the form of `execute` with a payload type.
    template <Codable T>
    [[nodiscard]] Async<ApiWebResponseObject<T>> executeEnvelope(Request request) const {
        return envelope<T>(executeAny(std::move(request), ApiPayloadType::of<T>()));
    }

    /// What the enveloped forms of `execute` are made of. The operation keeps alive what it needs of this object.
    ///
    /// @throws as the form of `execute` with a payload type.
    [[nodiscard]] virtual Async<AnyResponse> executeAny(Request request, ApiPayloadType payload) const = 0;

protected:
    CdnWebService();
};

} // namespace tovrel
