#include <QZFrameworkCoreLogic/StringURLEncoding.hpp>

#include <curl/curl.h>

#include <memory>
#include <regex>
#include <Support/FormBrowser.hpp>
#include <utility>

namespace tovrel::tests {

namespace {

struct CurlDeleter {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

using List = std::unique_ptr<curl_slist, CurlDeleter>;

List listOf(const std::vector<std::string>& lines) {
    curl_slist* list = nullptr;
    for (const std::string& line : lines) {
        list = curl_slist_append(list, line.c_str());
    }
    return List(list);
}

std::size_t append(const char* bytes, std::size_t size, std::size_t count, void* text) {
    static_cast<std::string*>(text)->append(bytes, size * count);
    return size * count;
}

std::string formOf(const std::map<std::string, std::string>& fields) {
    std::string form;
    for (const auto& [name, value] : fields) {
        form += (form.empty() ? "" : "&") + name + "=" + urlEncodeQueryParameter(value).value();
    }
    return form;
}

std::string withoutEntities(std::string text) {
    for (const auto& [entity, character] :
         {std::pair("&lt;", "<"), std::pair("&gt;", ">"), std::pair("&quot;", "\""), std::pair("&amp;", "&")}) {
        text = std::regex_replace(text, std::regex(entity), character);
    }
    return text;
}

} // namespace

std::string Page::header(const std::string& name) const {
    std::smatch match;
    const std::regex line("\r\n" + name + ": ([^\r]*)\r\n", std::regex::icase);
    return std::regex_search(head, match, line) ? match[1].str() : std::string();
}

std::map<std::string, std::string> Page::fields() const {
    std::map<std::string, std::string> fields;
    const std::regex input("<input type=\"hidden\" name=\"([^\"]*)\" value=\"([^\"]*)\">");
    for (std::sregex_iterator at(body.begin(), body.end(), input), end; at != end; ++at) {
        fields.emplace(withoutEntities((*at)[1]), withoutEntities((*at)[2]));
    }
    return fields;
}

std::string Page::formAction() const {
    std::smatch match;
    std::string action;
    if (std::regex_search(body, match, std::regex("<form[^>]* action=\"([^\"]*)\""))) {
        action = withoutEntities(match[1]);
    }
    return action.starts_with('/') ? url.substr(0, url.find('/', 8)) + action : action;
}

FormBrowser::FormBrowser(const testing::LocalBackEnd& backEnd, std::vector<std::string> hosts)
    : authority_(backEnd.certificateAuthorityPem()), connectTo_(std::move(hosts)) {
    for (std::string& host : connectTo_) {
        host += ":443:127.0.0.1:" + std::to_string(backEnd.port());
    }
}

Page FormBrowser::load(const std::string& url, const std::vector<std::string>& headers) const {
    return perform(url, nullptr, headers);
}

Page FormBrowser::post(const std::string& url, const std::map<std::string, std::string>& fields) const {
    const std::string body = formOf(fields);
    return perform(url, &body, {});
}

Page FormBrowser::submit(const Page& page, std::map<std::string, std::string> more) const {
    more.merge(page.fields());
    return post(page.formAction(), more);
}

Page FormBrowser::follow(const Page& page) const {
    return load(page.header("Location"));
}

Page FormBrowser::perform(const std::string& url, const std::string* body,
                          const std::vector<std::string>& headers) const {
    const std::unique_ptr<CURL, CurlDeleter> handle(curl_easy_init());
    const List connectTo = listOf(connectTo_);
    const List lines = listOf(headers);
    curl_blob authority{const_cast<char*>(authority_.data()), authority_.size(), CURL_BLOB_NOCOPY};
    Page page;
    page.url = url;
    curl_easy_setopt(handle.get(), CURLOPT_URL, url.c_str());
    curl_easy_setopt(handle.get(), CURLOPT_CONNECT_TO, connectTo.get());
    curl_easy_setopt(handle.get(), CURLOPT_HTTPHEADER, lines.get());
    curl_easy_setopt(handle.get(), CURLOPT_CAINFO_BLOB, &authority);
    curl_easy_setopt(handle.get(), CURLOPT_PROXY, "");
    curl_easy_setopt(handle.get(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle.get(), CURLOPT_TIMEOUT, 20L);
    curl_easy_setopt(handle.get(), CURLOPT_HEADERFUNCTION, &append);
    curl_easy_setopt(handle.get(), CURLOPT_HEADERDATA, &page.head);
    curl_easy_setopt(handle.get(), CURLOPT_WRITEFUNCTION, &append);
    curl_easy_setopt(handle.get(), CURLOPT_WRITEDATA, &page.body);
    if (body != nullptr) {
        curl_easy_setopt(handle.get(), CURLOPT_POSTFIELDS, body->c_str());
    }
    if (curl_easy_perform(handle.get()) == CURLE_OK) {
        curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &page.status);
    }
    return page;
}

} // namespace tovrel::tests
