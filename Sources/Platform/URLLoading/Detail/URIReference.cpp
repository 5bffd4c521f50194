#include <Platform/URLLoading/Detail/ASCII.hpp>
#include <Platform/URLLoading/Detail/URIReference.hpp>

#include <algorithm>

namespace tovrel {

namespace {

bool isScheme(std::string_view text) noexcept {
    return !text.empty() && ascii::isAlpha(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
        return ascii::isAlpha(c) || ascii::isDigit(c) || c == '+' || c == '-' || c == '.';
    });
}

std::string mergedPath(const URIReference& base, std::string_view path) {
    if (base.authority && base.path.empty()) {
        return std::string("/").append(path);
    }
    const std::size_t lastSlash = base.path.rfind('/');
    const std::string_view directory =
        lastSlash == std::string_view::npos ? std::string_view{} : base.path.substr(0, lastSlash + 1);
    return std::string(directory).append(path);
}

} // namespace

URIReference::URIReference(std::string_view text) noexcept {
    if (const std::size_t hash = text.find('#'); hash != std::string_view::npos) {
        fragment = text.substr(hash + 1);
        text = text.substr(0, hash);
    }
    if (const std::size_t mark = text.find('?'); mark != std::string_view::npos) {
        query = text.substr(mark + 1);
        text = text.substr(0, mark);
    }
    if (const std::size_t colon = text.find(':'); colon != std::string_view::npos && isScheme(text.substr(0, colon))) {
        scheme = text.substr(0, colon);
        text = text.substr(colon + 1);
    }
    if (text.starts_with("//")) {
        const std::size_t end = std::min(text.find('/', 2), text.size());
        authority = text.substr(2, end - 2);
        text = text.substr(end);
    }
    path = text;
}

std::string URIReference::text() const {
    std::string result;
    if (scheme) {
        result.append(*scheme).append(1, ':');
    }
    if (authority) {
        result.append("//").append(*authority);
    }
    result.append(path);
    if (query) {
        result.append(1, '?').append(*query);
    }
    if (fragment) {
        result.append(1, '#').append(*fragment);
    }
    return result;
}

URIAuthority::URIAuthority(std::string_view text) noexcept {
    if (const std::size_t at = text.rfind('@'); at != std::string_view::npos) {
        const std::string_view userInfo = text.substr(0, at);
        const std::size_t colon = userInfo.find(':');
        user = userInfo.substr(0, colon);
        if (colon != std::string_view::npos) {
            password = userInfo.substr(colon + 1);
        }
        text = text.substr(at + 1);
    }
    const std::size_t afterLiteral = text.starts_with('[') ? std::min(text.find(']'), text.size()) : 0;
    if (const std::size_t colon = text.find(':', afterLiteral); colon != std::string_view::npos) {
        port = text.substr(colon + 1);
        text = text.substr(0, colon);
    }
    host = text;
}

std::string removingDotSegments(std::string_view path) {
    std::string output;
    const auto removeLastSegment = [&output] {
        const std::size_t slash = output.rfind('/');
        output.resize(slash == std::string::npos ? 0 : slash);
    };
    while (!path.empty()) {
        if (path.starts_with("../")) {
            path.remove_prefix(3);
        } else if (path.starts_with("./") || path.starts_with("/./")) {
            path.remove_prefix(2);
        } else if (path == "/.") {
            path = "/";
        } else if (path.starts_with("/../")) {
            path.remove_prefix(3);
            removeLastSegment();
        } else if (path == "/..") {
            path = "/";
            removeLastSegment();
        } else if (path == "." || path == "..") {
            path = {};
        } else {
            const std::size_t end = std::min(path.find('/', 1), path.size());
            output.append(path.substr(0, end));
            path.remove_prefix(end);
        }
    }
    return output;
}

std::optional<std::string> resolved(const URIReference& base, const URIReference& reference) {
    URIReference target = reference;
    std::string path;
    if (reference.scheme || reference.authority) {
        path = removingDotSegments(reference.path);
    } else if (reference.path.empty()) {
        path = base.path;
        if (!reference.query) {
            target.query = base.query;
        }
    } else if (reference.path.starts_with('/')) {
        path = removingDotSegments(reference.path);
    } else {
        path = removingDotSegments(mergedPath(base, reference.path));
    }
    if (!reference.scheme) {
        target.scheme = base.scheme;
        if (!reference.authority) {
            target.authority = base.authority;
        }
    }
    target.path = path;
    std::string text = target.text();
    const URIReference again(text);
    if (again.scheme != target.scheme || again.authority != target.authority) {
        return std::nullopt;
    }
    return text;
}

} // namespace tovrel
