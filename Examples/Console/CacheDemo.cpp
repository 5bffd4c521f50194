#include "CacheDemo.hpp"

#include "DemoBackEnd.hpp"
#include "Journal.hpp"
#include "OtherProcess.hpp"

#include <Platform/Concurrency/Clock.hpp>
#include <Platform/Concurrency/Start.hpp>
#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <TovrelTesting/LocalSession.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

#include <chrono>
#include <memory>
#include <string>

using namespace tovrel;
using tovrel::testing::LocalBackEnd;

namespace {

using Policy = URLRequestCachePolicy;
using Provider = std::shared_ptr<TovrelURLSessionProvider>;

URLRequest catalogue(Policy policy) {
    URLRequest request(*URL::parse("https://" + demoHost + "/catalogue"));
    request.cachePolicy = policy;
    return request;
}

std::string described(const HTTPURLResponse& response) {
    const std::string* age = response.allHeaderFields().find("age");
    const std::string seconds = age == nullptr ? "" : ", " + *age + " s old";
    switch (response.source()) {
    case HTTPURLResponse::Source::cache:
        return "from the cache, without asking" + seconds;
    case HTTPURLResponse::Source::validatedCache:
        return "from the cache, confirmed by the back end" + seconds;
    case HTTPURLResponse::Source::network:
        break;
    }
    return "from the network";
}

void load(const Provider& provider, Policy policy = Policy::useProtocolCachePolicy) {
    const URLSessionResult result = get(provider->session()->data(catalogue(policy)));
    const auto& response = dynamic_cast<const HTTPURLResponse&>(*result.response);
    journal::line(std::to_string(response.statusCode()) + ", " + std::to_string(result.data->size()) + " bytes " +
                  described(response));
}

void printSent(LocalBackEnd& backEnd) {
    for (const auto& request : backEnd.requests()) {
        journal::sent(request);
    }
    backEnd.clearRequests();
}

} // namespace

void demonstrateCache(LocalBackEnd& backEnd) {
    journal::heading("The response cache: first a miss, then a hit in memory");
    const URLSessionConfiguration configuration = testing::localSessionConfiguration(backEnd, {demoHost});
    Provider provider = TovrelURLSessionProvider::make(configuration);
    load(provider);
    printSent(backEnd);
    load(provider);

    journal::heading("The same in a new process, which finds it on disk");
    provider.reset(); // what is stored is on disk from here on
    runAgain({"read-cache", backEnd.cacheDirectory().string()});

    journal::heading("Other sizes at run time, and a response that the back end has to confirm");
    provider = TovrelURLSessionProvider::make(configuration);
    provider->updateCache(WebRequestCacheDefinition(WebRequestCacheSize::mb(1), WebRequestCacheSize::mb(20)));
    load(provider, Policy::reloadRevalidatingCacheData);
    printSent(backEnd);

    journal::heading("Out of date, and nobody answers: the response may stand in for ten minutes");
    get(sleep(std::chrono::milliseconds(2100)));
    URLSessionConfiguration offline = configuration;
    offline.connectionOverrides = {URLConnectionOverride(demoHost, std::nullopt, "127.0.0.1", 1)};
    load(TovrelURLSessionProvider::make(offline));
}

void readCacheOfAnotherProcess(const std::filesystem::path& directory) {
    URLSessionConfiguration configuration;
    configuration.cacheDirectory = directory;
    load(TovrelURLSessionProvider::make(configuration), Policy::returnCacheDataDontLoad);
}
