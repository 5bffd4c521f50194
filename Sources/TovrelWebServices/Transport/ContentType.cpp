#include <TovrelWebServices/Transport/ContentType.hpp>

namespace tovrel {

std::string ContentType::value() const {
    switch (kind_) {
    case Kind::multipartFormData:
        return "multipart/form-data; boundary=\"" + boundary_ + "\"";
    case Kind::applicationJson:
        return "application/json";
    case Kind::applicationFormUrlEncoded:
        return "application/x-www-form-urlencoded";
    case Kind::plainText:
        return "text/plain";
    }
    return {};
}

} // namespace tovrel
