// [readme]
#include <Platform/Platform.hpp>
#include <TovrelWebServices/TovrelWebServices.hpp>

#include <cstdlib>
#include <fstream>
#include <iostream>

using namespace tovrel;

struct Article {
    std::string title;

    Article() = default;
    static constexpr auto fields() { return std::tuple{Field<&Article::title, "title">{}}; }
};

Async<void> readArticles(std::shared_ptr<ApiWebService> api) {
    std::optional<std::string> next;
    do {
        auto request = api->buildRequest("articles", HttpMethod::get);
        request->setQueryParameter("next", next);
        auto page = co_await api->executeEnvelope<std::vector<Article>>(request);
        for (const Article& article : page.data.value_or(std::vector<Article>())) {
            std::cout << article.title << '\n';
        }
        next = page.meta.pagination ? page.meta.pagination->next : std::nullopt;
    } while (next);
}

Async<void> saveAtlas(std::shared_ptr<CdnWebService> cdn) {
    auto request = cdn->buildRequest("files/atlas.bin", HttpMethod::get);
    request->setProgressObserver(
        [](const URLProgress& progress) { std::cout << progress.receivedBytes << " bytes so far\n"; });
    auto response = co_await cdn->execute(request);
    if (response.data) {
        std::ofstream("atlas.bin", std::ios::binary) << response.data->view();
    }
}

int main() {
    const char* secret = std::getenv("READER_SECRET");
    const TovrelAccountsClient client("reader", secret ? secret : "", TovrelAccountsRealm::tovrelstudios,
                                      TovrelAccountsEnvironment::production(), {"content"});
    auto executor = URLSessionWebRequestExecutor::make(TovrelURLSessionProvider::default_());
    TovrelAccountsWebServiceProvider provider(client, TovrelAppIdentifier("wx"), executor, Bundle::main());
    provider.register_(Services::default_());

    auto accounts = Services::default_().safeGet<TovrelAccountsWebService>();
    auto subscription = accounts->eventPublisher().subscribe([](const TovrelAccountsEvent& event) {
        if (event.kind() == TovrelAccountsEvent::Kind::didLogout) {
            std::cout << "logged out\n";
        }
    });
    try {
        get(readArticles(DefaultApiWebService::make(Services::default_())));
        get(saveAtlas(DefaultCdnWebService::make(Services::default_())));
    } catch (const TovrelDomainServiceError& error) {
        std::cerr << "refused: " << error.message() << '\n';
        return 1;
    } catch (const Error& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
// [readme]
