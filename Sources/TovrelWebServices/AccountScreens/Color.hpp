#pragma once

#include <Platform/System/Export.hpp>
#include <QZFrameworkCoreUI/UserInterfaceStyle.hpp>
#include <TovrelWebServices/AccountScreens/ColorResource.hpp>

#include <QtGui/QColor>
#include <variant>

namespace tovrel {

/// A colour of the user interface: a fixed one, or one that follows the appearance. A value; thread-safe.
class TOVREL_EXPORT Color {
public:
    /// A colour that is the same in every appearance.
    explicit Color(const QColor& color) : value_(color) {}
    /// One of the library's named colours.
    explicit Color(const ColorResource& resource) : value_(resource) {}

    /// The colour of text.
    [[nodiscard]] static Color primary() { return Color(Semantic::primary); }
    /// The colour of what can be pressed.
    [[nodiscard]] static Color accent() { return Color(Semantic::accent); }
    /// The colour of what is switched on.
    [[nodiscard]] static Color green() { return Color(Semantic::green); }
    /// The colour of what destroys.
    [[nodiscard]] static Color red() { return Color(Semantic::red); }

    /// The colour to paint with; an unspecified appearance is taken for the light one.
    [[nodiscard]] QColor resolved(UserInterfaceStyle appearance) const;

    friend bool operator==(const Color&, const Color&) = default;

private:
    enum class Semantic { primary, accent, green, red };

    explicit Color(Semantic semantic) : value_(semantic) {}

    static QColor resolved(Semantic semantic, UserInterfaceStyle appearance);

    std::variant<QColor, ColorResource, Semantic> value_;
};

} // namespace tovrel
