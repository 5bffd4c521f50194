// [readme]
#include <Platform/Platform.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

#include <iostream>

using namespace tovrel;

struct Item {
    std::int64_t identifier = 0;
    std::string title;
    std::optional<Date> createdAt; // "created_at" on the wire

    Item() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Item::identifier, "id">{}, Field<&Item::title, "title">{},
                          Field<&Item::createdAt, "createdAt">{}};
    }
};

Async<void> showLatest(std::shared_ptr<HttpWebService> service, std::string host) {
    auto request = WebRequest<RequestType::HTTP>::build(TovrelEnvironment::production, host, "items/latest");
    request->setQueryParameter("limit", "20")
        ->setDecodingStrategy(DecodingStrategy::snakeCaseAndMilliseconds())
        ->setRetryStrategy(TimesRetryLogicStrategy::make(3, 5.0));
    auto response = co_await service->execute<std::vector<Item>>(request);
    for (const Item& item : response.responseObject) {
        std::cout << item.identifier << ' ' << item.title << '\n';
    }
}

int main(int argc, char** argv) {
    auto executor = URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::default_());
    try {
        get(showLatest(DefaultHttpWebService::make(executor), argc > 1 ? argv[1] : "api.tovrel.example"));
    } catch (const Error& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
// [readme]
