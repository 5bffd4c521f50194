#pragma once

#include <Platform/Coding/JSONDecoder.hpp>
#include <TovrelWebServices/Services/AnyApiWebResponseObject.hpp>
#include <TovrelWebServices/Services/WebService.hpp>
#include <TovrelWebServices/Transport/WebResponse.hpp>

#include <utility>

namespace tovrel {

/// A service whose server answers in envelopes, and what such services share.
class TOVREL_EXPORT TovrelDomainWebService : public WebService {
public:
    ~TovrelDomainWebService() override;

    /// A decoded envelope of any payload type and the response that it came in.
    using AnyResponse = ResponseObjectWebResponse<AnyApiWebResponseObject>;

    /// @throws WebServiceError invalidServerResponse when the data is no envelope of a `T`.
    template <Codable T>
    [[nodiscard]] static ApiWebResponseObject<T> decode(const Data& data, const JSONDecoder& with) {
        return decode(data, with, ApiPayloadType::of<T>()).template take<T>();
    }

    [[nodiscard]] static AnyApiWebResponseObject decode(const Data& data, const JSONDecoder& with,
                                                        const ApiPayloadType& payload);

    /// Decodes the body, then judges the status: a body that is no envelope is an invalid response at any status.
    ///
    /// @param rawData The body of the response.
    /// @throws WebServiceError invalidServerResponse
    /// @throws TovrelDomainServiceError when the status is not 200 to 299.
    template <Codable T>
    [[nodiscard]] static ResponseObjectWebResponse<ApiWebResponseObject<T>>
    validatedTovrelResponse(WebResponse webResponse, const Data& rawData, const JSONDecoder& with) {
        return typed<T>(validatedTovrelResponse(std::move(webResponse), rawData, with, ApiPayloadType::of<T>()));
    }

    [[nodiscard]] static AnyResponse validatedTovrelResponse(WebResponse webResponse, const Data& rawData,
                                                             const JSONDecoder& with, const ApiPayloadType& payload);

protected:
    TovrelDomainWebService();

    template <class T>
    static ResponseObjectWebResponse<ApiWebResponseObject<T>> typed(AnyResponse response) {
        WebResponse webResponse(std::move(response.rawData), std::move(response.headers), response.statusCode);
        return ResponseObjectWebResponse<ApiWebResponseObject<T>>(std::move(response.responseObject).template take<T>(),
                                                                  std::move(webResponse));
    }

    template <class T>
    static Async<ResponseObjectWebResponse<ApiWebResponseObject<T>>> response(Async<AnyResponse> call) {
        AnyResponse answer = co_await std::move(call);
        co_return typed<T>(std::move(answer));
    }

    template <class T>
    static Async<ApiWebResponseObject<T>> envelope(Async<AnyResponse> call) {
        AnyResponse answer = co_await std::move(call);
        co_return std::move(answer.responseObject).template take<T>();
    }
};

} // namespace tovrel
