#include <Platform/Coding/JSONEncoder.hpp>
#include <TovrelWebServices/Services/WebServiceEnvironment.hpp>

#include <API/ApiAnswer.hpp>

namespace tovrel::benchmarks {

const char* const apiPath = "/records/latest";

std::string apiHost() {
    return std::string(TovrelApiEnvironment::test().domain());
}

std::string accessToken() {
    return std::string(800, 'a');
}

ApiAnswer apiAnswer() {
    return ApiAnswer(ApiResponseMeta("OK", "Here they are.", ApiResponsePagination(1, "cursor=2")),
                     makeEnvelope(1).data);
}

std::string apiAnswerBody() {
    const JSONEncoder encoder(KeyEncodingStrategy::convertToSnakeCase(), DateEncodingStrategy::millisecondsSince1970());
    return encoder.encode(apiAnswer()).string();
}

} // namespace tovrel::benchmarks
