#pragma once

#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <TovrelWebServices/Services/WebService.hpp>
#include <TovrelWebServices/Transport/DecodingStrategy.hpp>
#include <TovrelWebServices/Transport/WebResponse.hpp>

#include <memory>
#include <utility>

namespace tovrel {

/// Sends requests of any kind to any host, with the retries that they carry. It judges no status: that is the caller's.
class TOVREL_EXPORT HttpWebService : public WebService {
public:
    ~HttpWebService() override;

    /// The response as it came, whatever its status.
    ///
    /// @throws The failure of the last attempt: `WebServiceError`, `URLError`, or whatever the executor throws.
    /// @throws CancellationError when a back-off is cancelled.
    [[nodiscard]] Async<WebResponse> execute(std::shared_ptr<WebRequestable> request) const;

    /// The body decoded from JSON, whatever the status, with the request's custom decoding strategy if it has one, else
    /// with keys as they are and dates in their own form, also for requests of the API and CDN kinds.
    ///
    /// @throws DecodingError, at once and without a retry, when the body is not a `T`.
    /// @throws WebServiceError invalidServerResponse, after the retries, when there is no body.
    /// @throws what the form without a payload type throws.
    template <Codable T>
    [[nodiscard]] Async<ResponseObjectWebResponse<T>> execute(std::shared_ptr<WebRequestable> request) const {
        return hop(TaskPool::compute(), decoded<T>(executor(), std::move(request)));
    }

protected:
    HttpWebService();

private:
    enum class Body { optional, required };

    /// Sends until there is an answer or the retries are spent.
    static Async<WebResponse> send(std::shared_ptr<WebRequestExecutor> executor,
                                   std::shared_ptr<WebRequestable> request, Body body);
    static DecodingStrategy decodingStrategy(const WebRequestable& request);

    template <class T>
    static Async<ResponseObjectWebResponse<T>> decoded(std::shared_ptr<WebRequestExecutor> executor,
                                                       std::shared_ptr<WebRequestable> request) {
        WebResponse response = co_await send(std::move(executor), request, Body::required);
        const JSONDecoder decoder = decodingStrategy(*request).jsonDecoder();
        T responseObject = decoder.decode<T>(*response.data);
        ResponseObjectWebResponse<T> result(std::move(responseObject), std::move(response));
        co_return result;
    }
};

} // namespace tovrel
