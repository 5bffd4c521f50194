#include <TovrelWebServices/AccountScreens/Views/SignInButtonArtwork.hpp>

#include <utility>

namespace tovrel {

namespace {

SignInButtonArtwork::Source& chosenSource() {
    static auto& source = *new SignInButtonArtwork::Source();
    return source;
}

} // namespace

void SignInButtonArtwork::choose(Source source) {
    chosenSource() = std::move(source);
}

AnyView SignInButtonArtwork::view(AppleIDButtonStyle style) {
    return chosenSource() ? chosenSource()(style) : AnyView::empty();
}

} // namespace tovrel
