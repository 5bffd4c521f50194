#include "FuzzedRecord.hpp"

#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/Services/ApiEmptyDataResponse.hpp>
#include <TovrelWebServices/Services/TovrelDomainServiceError.hpp>
#include <TovrelWebServices/Services/TovrelDomainWebService.hpp>
#include <TovrelWebServices/Transport/DecodingStrategy.hpp>
#include <TovrelWebServices/Transport/WebServiceError.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tovrel::fuzz {
namespace {

template <class T>
std::optional<ApiWebResponseObject<T>> decode(const Data& body, std::int64_t status) {
    const JSONDecoder decoder = DecodingStrategy::snakeCaseAndMilliseconds().jsonDecoder();
    try {
        return TovrelDomainWebService::validatedTovrelResponse<T>(WebResponse(body, HTTPHeaders(), status), body,
                                                                  decoder)
            .responseObject;
    } catch (const WebServiceError& error) {
        if (error != WebServiceError::invalidServerResponse()) {
            fatalError("a body that is no envelope is reported as something else");
        }
    } catch (const TovrelDomainServiceError& error) {
        if (status == 200 || error.statusCode() != status) {
            fatalError("an envelope is refused for another status than its own");
        }
    }
    return std::nullopt;
}

/// What the encoder makes of an envelope decodes to an envelope of which it makes the same.
template <class T>
void decodeAndEncodeAgain(const Data& body) {
    const auto envelope = decode<T>(body, 200);
    if (decode<T>(body, 404)) {
        fatalError("a failure is taken for a success");
    }
    if (!envelope) {
        return;
    }
    const JSONEncoder encoder(KeyEncodingStrategy::convertToSnakeCase(), DateEncodingStrategy::millisecondsSince1970());
    Data encoded;
    try {
        encoded = encoder.encode(*envelope);
    } catch (const EncodingError&) {
        // A date too far away for milliseconds.
        return;
    }
    const auto again = decode<T>(encoded, 200);
    if (!again || again->meta != envelope->meta || again->data.has_value() != envelope->data.has_value()) {
        fatalError("what was encoded does not come back");
    }
}

} // namespace
} // namespace tovrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const tovrel::Data body(bytes, size);
    tovrel::fuzz::decodeAndEncodeAgain<tovrel::ApiEmptyDataResponse>(body);
    tovrel::fuzz::decodeAndEncodeAgain<std::vector<tovrel::fuzz::Record>>(body);
    return 0;
}
