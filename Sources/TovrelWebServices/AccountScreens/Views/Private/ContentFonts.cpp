#include <TovrelWebServices/AccountScreens/Views/Private/ContentFonts.hpp>
#include <TovrelWebServices/AccountScreens/Views/ScreenTextSize.hpp>

#include <cmath>

namespace tovrel {

namespace {

QFont::Weight weightOf(Font::Weight weight) {
    switch (weight) {
    case Font::Weight::ultraLight:
        return QFont::Thin;
    case Font::Weight::thin:
        return QFont::ExtraLight;
    case Font::Weight::light:
        return QFont::Light;
    case Font::Weight::regular:
        break;
    case Font::Weight::medium:
        return QFont::Medium;
    case Font::Weight::semibold:
        return QFont::DemiBold;
    case Font::Weight::bold:
        return QFont::Bold;
    case Font::Weight::heavy:
        return QFont::ExtraBold;
    case Font::Weight::black:
        return QFont::Black;
    }
    return QFont::Normal;
}

} // namespace

QFont toolkitFont(const TovrelUserAccountConfiguration::ContentFont& font) {
    QFont made;
    made.setPixelSize(static_cast<int>(std::lround(font.type.pointSize() * ScreenTextSize::factor())));
    made.setWeight(weightOf(font.weight));
    return made;
}

} // namespace tovrel
