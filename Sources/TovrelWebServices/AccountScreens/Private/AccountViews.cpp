#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/AccountScreens/Private/AccountViews.hpp>

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
    if (!viewsInUse()) {
        fatalError("Nothing draws the account screens.");
    }
    return *viewsInUse();
}

std::shared_ptr<const AccountViews> AccountViews::use(std::shared_ptr<const AccountViews> views) {
    return std::exchange(viewsInUse(), std::move(views));
}

} // namespace tovrel
