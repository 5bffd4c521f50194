#pragma once

#include <TovrelTesting/LocalBackEnd.hpp>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tovrel::tests {

/// What a browser got: a page, or where to go instead.
struct Page {
    std::string url;
    /// 0 where nobody answered.
    long status = 0;
    std::string head;
    std::string body;

    Page() = default;

    /// The value of the header line, or nothing.
    [[nodiscard]] std::string header(const std::string& name) const;
    /// What the page's form sends by itself.
    [[nodiscard]] std::map<std::string, std::string> fields() const;
    [[nodiscard]] std::string formAction() const;
};

/// A browser without a window: it loads pages and submits their forms, runs no scripts and follows no redirects. It
/// finds the hosts of the back end there, and every other address where it is.
class FormBrowser {
public:
    FormBrowser(const testing::LocalBackEnd& backEnd, std::vector<std::string> hosts);

    Page load(const std::string& url, const std::vector<std::string>& headers = {}) const;
    Page post(const std::string& url, const std::map<std::string, std::string>& fields) const;
    /// Submits the page's form with these fields besides its own.
    Page submit(const Page& page, std::map<std::string, std::string> more = {}) const;
    /// Goes where the page sends the browser.
    Page follow(const Page& page) const;

private:
    [[nodiscard]] Page perform(const std::string& url, const std::string* body,
                               const std::vector<std::string>& headers) const;

    std::string authority_;
    std::vector<std::string> connectTo_;
};

} // namespace tovrel::tests
