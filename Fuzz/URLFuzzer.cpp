#include <Platform/System/FatalError.hpp>
#include <Platform/URLLoading/Detail/Redirect.hpp>
#include <Platform/URLLoading/PercentEncoding.hpp>
#include <Platform/URLLoading/URLComponents.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace tovrel::fuzz {
namespace {

void require(bool condition, const char* what) {
    if (!condition) {
        fatalError(what);
    }
}

void takeApart(const URL& url) {
    URLComponents components(url);
    const auto again = components.url();
    // An empty port is the one thing that components do not keep.
    require(again.has_value(), "the components of a URL form none");
    require(URLComponents(*again) == components, "the components of a URL change");
    if (const auto items = components.queryItems()) {
        components.setQueryItems(items);
        require(components.url().has_value(), "the items of a query form none");
        require(items->empty() || components.queryItems() == items, "the items of a query change");
    }
}

void build(std::string_view text) {
    if (const auto path = percentEncodePath(text)) {
        const auto url = URL::parse("https://host/" + *path);
        require(url.has_value(), "an encoded path is no path");
        require(url->path() == "/" + std::string(text), "an encoded path decodes to another");
    }
    URLComponents components;
    components.setScheme("https");
    components.setHost("host");
    components.setQueryItems(std::vector<URLQueryItem>{URLQueryItem(std::string(text), std::string(text))});
    const auto url = components.url();
    require(url.has_value(), "an encoded query is no query");
    require(URLComponents(*url).queryItems() == components.queryItems(), "an encoded query decodes to another");
}

void redirect(const URL& from, std::string_view location) {
    if (refusal(from, false)) {
        return;
    }
    const auto next = redirected(URLRequest(from), 302, location, false);
    if (const auto* request = std::get_if<URLRequest>(&next)) {
        require(!refusal(request->url, false), "a redirect leads where no request may go");
    }
}

} // namespace
} // namespace tovrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tovrel;
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const std::size_t lineEnd = text.find('\n');
    const std::string_view first = text.substr(0, lineEnd);
    const std::string_view second = lineEnd == std::string_view::npos ? std::string_view() : text.substr(lineEnd + 1);
    fuzz::build(second);
    if (const auto base = URL::parse(first)) {
        fuzz::takeApart(*base);
        fuzz::redirect(*base, second);
        if (const auto url = URL::parse(second, *base)) {
            fuzz::takeApart(url->absoluteURL());
        }
    }
    return 0;
}
