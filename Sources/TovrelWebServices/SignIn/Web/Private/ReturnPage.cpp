#include <TovrelWebServices/SignIn/Web/Private/ReturnPage.hpp>

#include <fmt/format.h>

#include <string_view>

namespace tovrel::detail {

namespace {

std::string_view reason(int status) {
    switch (status) {
    case 200:
        return "OK";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    case 410:
        return "Gone";
    case 431:
        return "Request Header Fields Too Large";
    default:
        return "Bad Request";
    }
}

std::string_view text(const CallbackVerdict& verdict) {
    if (!verdict.answer) {
        return "This is not what the application waits for.";
    }
    if (verdict.answer->kind == CallbackAnswer::Kind::code) {
        return "You can close this page and return to the application.";
    }
    return "The sign-in did not succeed. You can close this page and return to the application.";
}

} // namespace

std::string returnPage(const CallbackVerdict& verdict) {
    const std::string page = fmt::format("<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                                         "<meta name=\"viewport\" content=\"width=device-width\">\n"
                                         "<title>Sign in</title>\n<link rel=\"icon\" href=\"data:,\">\n</head>\n"
                                         "<body>\n<main>\n<h1>Sign in</h1>\n<p>{}</p>\n</main>\n</body>\n</html>\n",
                                         text(verdict));
    return fmt::format("HTTP/1.1 {} {}\r\n"
                       "Content-Type: text/html; charset=utf-8\r\n"
                       "Content-Length: {}\r\n"
                       "Content-Security-Policy: default-src 'none'; img-src data:; frame-ancestors 'none'\r\n"
                       "X-Content-Type-Options: nosniff\r\n"
                       "Cache-Control: no-store\r\n"
                       "Referrer-Policy: no-referrer\r\n"
                       "{}Connection: close\r\n\r\n{}",
                       verdict.status, reason(verdict.status), page.size(),
                       verdict.status == 405 ? "Allow: GET\r\n" : "", page);
}

} // namespace tovrel::detail
