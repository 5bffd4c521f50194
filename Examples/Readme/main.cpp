// [readme]
#include <Platform/Coding/Field.hpp>
#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Concurrency/Start.hpp>
#include <Platform/URLLoading/URLSession.hpp>

#include <iostream>

struct Item {
    std::int64_t identifier = 0;
    std::string title;

    Item() = default;
    static constexpr auto fields() {
        return std::tuple{tovrel::Field<&Item::identifier, "id">{}, tovrel::Field<&Item::title, "title">{}};
    }
};

tovrel::Async<void> show(std::shared_ptr<tovrel::URLSession> session, tovrel::URL url) {
    tovrel::URLSessionResult result = co_await session->data(tovrel::URLRequest(url));
    for (const Item& item : tovrel::JSONDecoder().decode<std::vector<Item>>(result.data.value())) {
        std::cout << item.identifier << ' ' << item.title << '\n';
    }
}

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        auto session = tovrel::URLSession::make(tovrel::URLSessionConfiguration());
        tovrel::get(show(session, tovrel::URL::parse(argv[i]).value()));
    }
}
// [readme]
