#pragma once

#include <Platform/System/Export.hpp>

namespace tovrel {

/// A text style. A value; thread-safe.
class TOVREL_EXPORT Font {
public:
    enum class TextStyle {
        largeTitle,
        title,
        title2,
        title3,
        headline,
        subheadline,
        body,
        callout,
        footnote,
        caption,
        caption2
    };

    enum class Weight { ultraLight, thin, light, regular, medium, semibold, bold, heavy, black };

    /* implicit */ constexpr Font(TextStyle style) : style_(style) {}

    static constexpr Font largeTitle() { return TextStyle::largeTitle; }
    static constexpr Font title() { return TextStyle::title; }
    static constexpr Font title2() { return TextStyle::title2; }
    static constexpr Font title3() { return TextStyle::title3; }
    static constexpr Font headline() { return TextStyle::headline; }
    static constexpr Font subheadline() { return TextStyle::subheadline; }
    static constexpr Font body() { return TextStyle::body; }
    static constexpr Font callout() { return TextStyle::callout; }
    static constexpr Font footnote() { return TextStyle::footnote; }
    static constexpr Font caption() { return TextStyle::caption; }
    static constexpr Font caption2() { return TextStyle::caption2; }

    [[nodiscard]] constexpr TextStyle style() const { return style_; }

    /// The height of the text in points, before the user's own enlargement.
    [[nodiscard]] double pointSize() const;

    friend constexpr bool operator==(Font a, Font b) { return a.style_ == b.style_; }

private:
    TextStyle style_;
};

} // namespace tovrel
