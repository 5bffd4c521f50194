#include <Platform/Concurrency/Start.hpp>
#include <TovrelTesting/LocalBackEnd.hpp>
#include <TovrelTesting/LocalSession.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

#include <iostream>

using namespace tovrel;
using tovrel::testing::LocalBackEnd;
using tovrel::testing::ReceivedRequest;
using tovrel::testing::ScriptedResponse;

int main() {
    auto backEnd = LocalBackEnd::start();
    backEnd->on("GET", "/word", [](const ReceivedRequest&) { return ScriptedResponse::json(R"(["linked"])"); });

    auto sessions = TovrelURLSessionProvider::make(testing::localSessionConfiguration(*backEnd, {"localhost"}));
    auto service = DefaultHttpWebService::make(URLSessionWebRequestExecutor::make(sessions));
    auto request = WebRequest<RequestType::HTTP>::build(TovrelEnvironment::production, "localhost", "word");
    auto response = get(service->execute<std::vector<std::string>>(request));
    std::cout << response.responseObject.front() << '\n';
}
