#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Task.hpp>
#include <TovrelWebServices/AccountScreens/Private/AccountText.hpp>
#include <TovrelWebServices/AccountScreens/Private/MainThreadObject.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountManageViewModel.hpp>

#include <algorithm>
#include <QtCore/QVariantMap>

namespace tovrel {

namespace {

using Model = TovrelUserAccountManageViewModel;

std::vector<Model::Section> makeSections() {
    return {Model::Section::consent({Model::Item(0, localized(AccountText::marketingConsent))}),
            Model::Section::manageAccount({Model::Item(0, localized(AccountText::logout)),
                                           Model::Item(1, localized(AccountText::deleteAccount))})};
}

QVariantList described(const std::vector<Model::Item>& items) {
    QVariantList list;
    for (const Model::Item& item : items) {
        list.append(QVariantMap{{QStringLiteral("index"), static_cast<qlonglong>(item.index)},
                                {QStringLiteral("title"), QString::fromStdString(item.title)}});
    }
    return list;
}

} // namespace

TovrelUserAccountManageViewModel::Section TovrelUserAccountManageViewModel::Section::consent(std::vector<Item> items) {
    return Section(Kind::consent, std::move(items));
}

TovrelUserAccountManageViewModel::Section
TovrelUserAccountManageViewModel::Section::manageAccount(std::vector<Item> items) {
    return Section(Kind::manageAccount, std::move(items));
}

std::string TovrelUserAccountManageViewModel::Section::title() const {
    return localized(kind_ == Kind::consent ? AccountText::consentSection : AccountText::manageAccountSection);
}

std::shared_ptr<TovrelUserAccountManageViewModel>
TovrelUserAccountManageViewModel::make(std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService,
                                       std::weak_ptr<TovrelUserAccountManageViewObserver> observer) {
    return ownedByMainThread(
        new TovrelUserAccountManageViewModel(std::move(tovrelAccountsWebService), std::move(observer)));
}

TovrelUserAccountManageViewModel::TovrelUserAccountManageViewModel(
    std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService,
    std::weak_ptr<TovrelUserAccountManageViewObserver> observer)
    : TovrelUserAccountViewModel(TovrelUserAccountViewState::manageAccount, observer),
      tovrelAccountsWebService_(std::move(tovrelAccountsWebService)),
      observer_(std::move(observer)),
      sections_(makeSections()) {}

TovrelUserAccountManageViewModel::~TovrelUserAccountManageViewModel() = default;

std::shared_ptr<TovrelUserAccountManageViewModel> TovrelUserAccountManageViewModel::self() {
    return std::static_pointer_cast<TovrelUserAccountManageViewModel>(shared_from_this());
}

std::vector<TovrelUserAccountManageViewModel::Section>
TovrelUserAccountManageViewModel::sorted(std::vector<Section> sections) {
    std::stable_sort(sections.begin(), sections.end(), [](const Section& a, const Section& b) {
        return a.kind() == Section::Kind::consent && b.kind() != Section::Kind::consent;
    });
    return sections;
}

std::vector<TovrelUserAccountManageViewModel::Item>
TovrelUserAccountManageViewModel::sortedItems(const Section& section) {
    std::vector<Item> items = section.items();
    std::stable_sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.index < b.index; });
    return items;
}

QVariantList TovrelUserAccountManageViewModel::sectionList() const {
    QVariantList list;
    for (const Section& section : sortedSections()) {
        const bool isConsent = section.kind() == Section::Kind::consent;
        list.append(QVariantMap{
            {QStringLiteral("kind"), isConsent ? QStringLiteral("consent") : QStringLiteral("manageAccount")},
            {QStringLiteral("title"), QString::fromStdString(section.title())},
            {QStringLiteral("items"), described(sortedItems(section))}});
    }
    return list;
}

Async<void> TovrelUserAccountManageViewModel::onLogoutButtonTap() {
    return MainActor::run(logout(self()));
}

Async<void> TovrelUserAccountManageViewModel::logout(std::shared_ptr<TovrelUserAccountManageViewModel> self) {
    co_await self->tovrelAccountsWebService_->logout(TovrelAccountsLogoutReason::userInitiated());
    if (const auto observer = self->observer_.lock()) {
        observer->manageAccountViewDidLogout();
    }
}

Async<void> TovrelUserAccountManageViewModel::onDeleteAccountButtonTap() {
    return MainActor::run(deleteAccount(self()));
}

Async<void> TovrelUserAccountManageViewModel::deleteAccount(std::shared_ptr<TovrelUserAccountManageViewModel> self) {
    co_await self->tovrelAccountsWebService_->deleteAccount();
    if (const auto observer = self->observer_.lock()) {
        observer->manageAccountViewDidDeleteAccount();
    }
}

void TovrelUserAccountManageViewModel::onLogoutRowTap() {
    setCurrentAlert(TovrelUserAccountAlert::logout(onButtonTap(&TovrelUserAccountManageViewModel::onLogoutButtonTap)));
}

void TovrelUserAccountManageViewModel::onDeleteAccountRowTap() {
    setCurrentAlert(TovrelUserAccountAlert::deleteAccount(
        onButtonTap(&TovrelUserAccountManageViewModel::onDeleteAccountButtonTap)));
}

std::function<void()> TovrelUserAccountManageViewModel::onButtonTap(AccountOperation operation) {
    // Weak, for this object owns the alert that owns the action.
    return [weak = std::weak_ptr(self()), operation] {
        if (auto self = weak.lock()) {
            Operation run = [self, operation] { return ((*self).*operation)(); };
            Task::spawn(MainActor::executor(), TovrelUserAccountManageViewModel::run(self, std::move(run)));
        }
    };
}

Async<void> TovrelUserAccountManageViewModel::run(std::shared_ptr<TovrelUserAccountManageViewModel> self,
                                                  Operation operation) {
    self->setIsLoading(true);
    const Outcome<void> outcome = co_await self->performOperation(std::move(operation));
    self->setIsLoading(false);
    if (outcome.hasValue()) {
        self->dismissScreen();
    }
}

} // namespace tovrel
