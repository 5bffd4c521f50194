#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <TovrelWebServices/Services/ApiEmptyDataResponse.hpp>
#include <TovrelWebServices/Services/TovrelDomainWebService.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>
#include <TovrelWebServices/Transport/WebRequest.hpp>

#include <memory>
#include <string_view>
#include <utility>

namespace tovrel {

/// Sends authenticated requests to the JSON API and returns the envelopes of its answers.
///
/// Every form of `execute` may be awaited from any executor; a large body is decoded on the pool. The request gains the
/// header "Authorization", so one call at a time may execute it.
class TOVREL_EXPORT ApiWebService : public TovrelDomainWebService {
public:
    using Request = std::shared_ptr<WebRequest<RequestType::API>>;

    ~ApiWebService() override;

    [[nodiscard]] virtual TovrelApiEnvironment environment() const = 0;

    /// A request to the API that accepts deflate and gzip, with 60 seconds of timeout.
    ///
    /// @param resourceUrl The path below the host, without a leading slash.
    /// @throws WebServiceError invalidUrl
    [[nodiscard]] Request buildRequest(std::string_view resourceUrl, HttpMethod method) const;

    /// The envelope of an answer whose payload does not matter.
    ///
    /// @throws as the form with a payload type.
    [[nodiscard]] Async<ApiWebResponseObject<ApiEmptyDataResponse>> execute(Request request) const;

    /// The envelope with the response that it came in. JSON is decoded by the request's custom decoding strategy if it
    /// has one, else with keys from snake case and dates from milliseconds since 1970.
    ///
    /// @throws TovrelDomainServiceError when the server refuses with an envelope.
    /// @throws WebServiceError unauthorized (401; the account is logged out then), invalidServerResponse (no envelope
    /// of a `T`, at any other status, or no body).
    /// @throws CancellationError when a back-off is cancelled.
    /// @throws what the accounts service's login or logout throws, or its executor once the retries are spent.
    template <Codable T>
    [[nodiscard]] Async<ResponseObjectWebResponse<ApiWebResponseObject<T>>> execute(Request request) const {
        return response<T>(executeAny(std::move(request), ApiPayloadType::of<T>()));
    }

    /// The envelope alone.
    ///
    /// @throws as `execute`.
    template <Codable T>
    [[nodiscard]] Async<ApiWebResponseObject<T>> executeEnvelope(Request request) const {
        return envelope<T>(executeAny(std::move(request), ApiPayloadType::of<T>()));
    }

    /// What all forms of `execute` are made of. The operation keeps alive what it needs of this object.
    ///
    /// @throws as `execute`.
    [[nodiscard]] virtual Async<AnyResponse> executeAny(Request request, ApiPayloadType payload) const = 0;

protected:
    ApiWebService();
};

} // namespace tovrel
