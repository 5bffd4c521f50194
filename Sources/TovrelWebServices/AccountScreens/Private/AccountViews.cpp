#include <TovrelWebServices/AccountScreens/Private/AccountViews.hpp>
#include <TovrelWebServices/AccountScreens/Views/Private/QuickAccountViews.hpp>

#include <utility>

namespace tovrel {

namespace {

std::shared_ptr<const AccountViews>& viewsInUse() {
    static auto& views = *new std::shared_ptr<const AccountViews>();
    return views;
}

} // namespace

AccountViews::AccountViews() = default;

AccountViews::~AccountViews() = default;

const AccountViews& AccountViews::current() {
    static const auto& quick = *new QuickAccountViews();
    return viewsInUse() ? *viewsInUse() : quick;
}

std::shared_ptr<const AccountViews> AccountViews::use(std::shared_ptr<const AccountViews> views) {
    return std::exchange(viewsInUse(), std::move(views));
}

} // namespace tovrel
