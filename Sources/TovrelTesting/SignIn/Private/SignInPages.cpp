#include <TovrelTesting/Private/NoStore.hpp>
#include <TovrelTesting/Private/OpaqueToken.hpp>
#include <TovrelTesting/SignIn/Private/SignInPages.hpp>

#include <fmt/format.h>

namespace tovrel::testing {

namespace {

std::string escaped(std::string_view text) {
    std::string html;
    for (const char character : text) {
        switch (character) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        default:
            html += character;
        }
    }
    return html;
}

/// The page may use the one script with this nonce, its own style, and nothing else.
ScriptedResponse page(int status, std::string_view title, std::string_view content, std::string_view scriptNonce = "") {
    ScriptedResponse response(status);
    response.headers.emplace_back("Content-Type", "text/html; charset=utf-8");
    std::string policy = "default-src 'none'; style-src 'unsafe-inline'; img-src data:; frame-ancestors 'none'";
    if (!scriptNonce.empty()) {
        policy += fmt::format("; script-src 'nonce-{}'", scriptNonce);
    }
    response.headers.emplace_back("Content-Security-Policy", policy);
    response.headers.emplace_back("Referrer-Policy", "no-referrer");
    response.body = fmt::format("<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                                "<meta name=\"viewport\" content=\"width=device-width\">\n<title>{0}</title>\n"
                                "<link rel=\"icon\" href=\"data:,\">\n"
                                "<style>body{{font-family:sans-serif;max-width:30em;margin:4em auto;padding:0 1em}}"
                                "button{{font-size:1em;padding:.6em 1.4em;margin-right:1em}}</style>\n"
                                "</head>\n<body>\n<main>\n<h1>{0}</h1>\n{1}</main>\n</body>\n</html>\n",
                                escaped(title), content);
    return notStored(std::move(response));
}

std::string hidden(std::string_view name, std::string_view value) {
    return fmt::format("<input type=\"hidden\" name=\"{}\" value=\"{}\">\n", escaped(name), escaped(value));
}

std::string described(const IdentityUser& user) {
    std::string text = user.firstName.value_or("");
    if (user.lastName) {
        text += (text.empty() ? "" : " ") + *user.lastName;
    }
    if (user.email) {
        text += text.empty() ? *user.email : " (" + *user.email + ")";
    }
    return text.empty() ? user.subject : text;
}

} // namespace

ScriptedResponse consentPage(const IdentityUser& user, std::string_view application, std::string_view ticket,
                             bool sharesUserRecord) {
    const std::string_view shared =
        sharesUserRecord ? "Your name and e-mail address will be shared with it." : "It knows you already.";
    return page(200, "Sign in",
                fmt::format("<p id=\"user\">You are {}.</p>\n<p>Sign in to {}? {}</p>\n"
                            "<form method=\"post\" action=\"/auth/authorize\">\n{}"
                            "<button id=\"continue\" name=\"decision\" value=\"continue\">Continue</button>\n"
                            "<button id=\"cancel\" name=\"decision\" value=\"cancel\">Cancel</button>\n</form>\n",
                            escaped(described(user)), escaped(application), shared, hidden("request", ticket)));
}

ScriptedResponse formPostPage(std::string_view url, const FormFields& fields) {
    std::string inputs;
    for (const auto& [name, value] : fields) {
        inputs += hidden(name, value);
    }
    const std::string nonce = makeOpaqueToken(16);
    return page(200, "Returning to the application",
                fmt::format("<form id=\"answer\" method=\"post\" action=\"{}\">\n{}"
                            "<noscript><button>Return to the application</button></noscript>\n</form>\n"
                            "<script nonce=\"{}\">document.getElementById(\"answer\").submit();</script>\n",
                            escaped(url), inputs, nonce),
                nonce);
}

ScriptedResponse problemPage(std::string_view text) {
    return page(400, "This sign-in cannot go on", fmt::format("<p>{}</p>\n", escaped(text)));
}

} // namespace tovrel::testing
