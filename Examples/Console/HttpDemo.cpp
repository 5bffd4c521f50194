#include "HttpDemo.hpp"

#include "CacheDemo.hpp"
#include "DemoBackEnd.hpp"
#include "Item.hpp"
#include "Journal.hpp"

#include <Platform/Concurrency/Start.hpp>
#include <Platform/Concurrency/TaskGroup.hpp>
#include <TovrelTesting/LocalSession.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

#include <chrono>
#include <cstdio>
#include <set>
#include <string>
#include <string_view>
#include <vector>

using namespace tovrel;
using tovrel::testing::Fault;
using tovrel::testing::FaultPoint;
using tovrel::testing::LocalBackEnd;

namespace {

using Request = WebRequest<RequestType::HTTP>;
using Seconds = std::chrono::duration<double>;

/// The client's side of the demo and, for the journal alone, the server's.
struct Demo {
    std::unique_ptr<LocalBackEnd> backEnd = startDemoBackEnd();
    std::shared_ptr<HttpWebService> service = makeService(true);

    std::shared_ptr<HttpWebService> makeService(bool allowsHTTP2) const {
        URLSessionConfiguration configuration = testing::localSessionConfiguration(*backEnd, {demoHost});
        configuration.allowsHTTP2 = allowsHTTP2;
        return DefaultHttpWebService::make(
            URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::make(std::move(configuration))));
    }

    /// Prints the requests that arrived since the last time.
    void printSent() const {
        for (const auto& request : backEnd->requests()) {
            journal::sent(request);
        }
        backEnd->clearRequests();
    }
};

std::shared_ptr<Request> request(std::string_view path) {
    return Request::build(TovrelEnvironment::production, demoHost, path)
        ->setAcceptEncoding(AcceptEncodingType::default_())
        ->setDecodingStrategy(DecodingStrategy::snakeCaseAndMilliseconds());
}

void getTypedRecords(const Demo& demo) {
    journal::heading("GET over TLS, decoded into typed records");
    const auto sent =
        request("items/latest")->setQueryParameter("limit", "3")->setAcceptLanguages({AcceptLanguage("en")});
    const auto response = get(demo.service->execute<std::vector<Item>>(sent));
    demo.printSent();
    journal::received(response.statusCode, response.headers, response.rawData);
    for (const Item& item : response.responseObject) {
        journal::line("item " + described(item));
    }
}

void postRecord(const Demo& demo) {
    journal::heading("POST of a JSON body");
    const auto sent = request("items")->setMethod(HttpMethod::post)->setBody(NewItem("Sextant"), JSONEncoder());
    const auto response = get(demo.service->execute<Item>(sent));
    demo.printSent();
    journal::received(response.statusCode, response.headers, response.rawData);
    journal::line("item " + described(response.responseObject));
}

void retryAfterFault(const Demo& demo) {
    journal::heading("A connection that breaks in the middle of the response: a retry with its back-off");
    demo.backEnd->inject(Fault::truncation(FaultPoint::responseBody));
    const auto strategy = TimesRetryLogicStrategy::make(3, 5.0);
    const auto begin = std::chrono::steady_clock::now();
    const auto sent = request("items/7")->setRetryStrategy(strategy)->setWillRetryObserver([&] {
        const Seconds waited = std::chrono::steady_clock::now() - begin;
        char text[80];
        std::snprintf(text, sizeof text, "the response broke off; waited %.2f s, sending again (retry %d of 3)",
                      waited.count(), static_cast<int>(strategy->currentRetries()));
        journal::line(text);
    });
    const auto response = get(demo.service->execute<Item>(sent));
    demo.printSent();
    journal::received(response.statusCode, response.headers, response.rawData);
}

template <class T>
void expectFailure(const Demo& demo, Async<T> operation) {
    std::exception_ptr failure;
    try {
        get(std::move(operation));
    } catch (...) {
        failure = std::current_exception();
    }
    demo.printSent();
    journal::failed(failure);
}

void timeOut(const Demo& demo) {
    journal::heading("A server that falls silent: a timeout after half a second without a byte");
    demo.backEnd->inject(Fault::stall(FaultPoint::responseStart));
    expectFailure(demo, demo.service->execute(request("items/8")->setTimeoutInterval(0.5)));
    demo.backEnd->releaseStalled();
}

void notFound(const Demo& demo) {
    journal::heading("404: a response for who asks for it, an error for who wants success");
    const WebResponse response = get(demo.service->execute(request("nowhere")));
    demo.printSent();
    journal::received(response.statusCode, response.headers, response.data);
    expectFailure(demo, demo.service->run(request("nowhere")));
}

void multiplex(const Demo& demo) {
    journal::heading("HTTP/2: eight requests at once on one connection; HTTP/1.1 where HTTP/2 is not wanted");
    TaskGroup group;
    std::vector<ChildTask<ResponseObjectWebResponse<Item>>> children;
    for (int i = 1; i <= 8; ++i) {
        children.push_back(group.add(demo.service->execute<Item>(request("items/" + std::to_string(i)))));
    }
    for (const auto& child : children) {
        get(child.value());
    }
    std::set<std::uint64_t> connections;
    std::string streams;
    for (const auto& sent : demo.backEnd->requests()) {
        connections.insert(sent.connection);
        streams += " " + std::to_string(sent.stream);
    }
    demo.backEnd->clearRequests();
    journal::line(std::to_string(connections.size()) + " connection, streams" + streams);
    get(demo.makeService(false)->execute<Item>(request("items/9")));
    demo.printSent();
}

} // namespace

void demonstrateHttp() {
    const Demo demo;
    journal::part("Plain HTTP. A local back end plays https://" + demoHost + " on port " +
                  std::to_string(demo.backEnd->port()) + ".");
    getTypedRecords(demo);
    postRecord(demo);
    retryAfterFault(demo);
    timeOut(demo);
    notFound(demo);
    multiplex(demo);
    demonstrateCache(*demo.backEnd);
}
