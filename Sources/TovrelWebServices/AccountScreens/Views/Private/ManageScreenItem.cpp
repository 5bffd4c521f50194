#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountScreens.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/ContentFonts.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/ManageScreenItem.hpp>

#include <utility>

namespace tovrel {

ManageScreenItem::ManageScreenItem(QQuickItem* parent) : AccountScreenItem(parent) {}

ManageScreenItem::~ManageScreenItem() = default;

void ManageScreenItem::show(std::shared_ptr<TovrelUserAccountManageViewModel> model, std::shared_ptr<Config> config) {
    model_ = std::move(model);
    config_ = std::move(config);
    connect(model_.get(), &TovrelUserAccountViewModel::shouldDismissChanged, this, &ManageScreenItem::dismiss);
    reportShown([shown = model_](bool isShown) { isShown ? shown->onAppear() : shown->onDisappear(); });
    Q_EMIT modelChanged();
    Q_EMIT styleChanged();
}

ManageScreenItem::TitleMode ManageScreenItem::titleMode() const {
    switch (config_->navigationBarStyle()) {
    case NavigationBarItem::TitleDisplayMode::automatic:
        break;
    case NavigationBarItem::TitleDisplayMode::inline_:
        return TitleMode::Inline;
    case NavigationBarItem::TitleDisplayMode::large:
        return TitleMode::Large;
    }
    return TitleMode::Automatic;
}

ViewSource ManageScreenItem::loadingView() const {
    return ViewSource(tovrel::loadingView(config_->loadingType()));
}

QColor ManageScreenItem::resolved(const Color& color) {
    return color.resolved(CurrentAppearance::get());
}

QFont ManageScreenItem::marketingConsentFont() const {
    return toolkitFont(config_->marketingConsentContentFont());
}

QFont ManageScreenItem::logoutFont() const {
    return toolkitFont(config_->logoutContentFont());
}

QFont ManageScreenItem::deleteAccountFont() const {
    return toolkitFont(config_->deleteAccountContentFont());
}

} // namespace tovrel
