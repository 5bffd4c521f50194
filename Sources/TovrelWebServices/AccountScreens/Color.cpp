#include <TovrelWebServices/AccountScreens/Color.hpp>

namespace tovrel {

QColor Color::resolved(Semantic semantic, UserInterfaceStyle appearance) {
    const bool isDark = appearance == UserInterfaceStyle::dark;
    switch (semantic) {
    case Semantic::primary:
        return isDark ? QColor(0xFF, 0xFF, 0xFF) : QColor(0x00, 0x00, 0x00);
    case Semantic::accent:
        return isDark ? QColor(0x4D, 0xA3, 0xFF) : QColor(0x00, 0x62, 0xCC);
    case Semantic::green:
        return isDark ? QColor(0x2E, 0x9E, 0x4B) : QColor(0x24, 0x8A, 0x3D);
    case Semantic::red:
        return isDark ? QColor(0xFF, 0x69, 0x61) : QColor(0xC4, 0x1E, 0x2A);
    }
    return {};
}

QColor Color::resolved(UserInterfaceStyle appearance) const {
    if (const auto* color = std::get_if<QColor>(&value_)) {
        return *color;
    }
    if (const auto* resource = std::get_if<ColorResource>(&value_)) {
        return resource->resolved(appearance);
    }
    return resolved(std::get<Semantic>(value_), appearance);
}

} // namespace tovrel
