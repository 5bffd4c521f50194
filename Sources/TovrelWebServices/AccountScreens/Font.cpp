#include <TovrelWebServices/AccountScreens/Font.hpp>

namespace tovrel {

double Font::pointSize() const {
    switch (style_) {
    case TextStyle::largeTitle:
        return 34;
    case TextStyle::title:
        return 28;
    case TextStyle::title2:
        return 22;
    case TextStyle::title3:
        return 20;
    case TextStyle::headline:
    case TextStyle::body:
        return 17;
    case TextStyle::callout:
        return 16;
    case TextStyle::subheadline:
        return 15;
    case TextStyle::footnote:
        return 13;
    case TextStyle::caption:
        return 12;
    case TextStyle::caption2:
        return 11;
    }
    return 17;
}

} // namespace tovrel
