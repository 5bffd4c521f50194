#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountObservers.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewModel.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsWebService.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <QtCore/QObject>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>
#include <string>
#include <utility>
#include <vector>

namespace tovrel {

/// The state of the manage-account screen and what it does. See `TovrelUserAccountViewModel`.
class TOVREL_EXPORT TovrelUserAccountManageViewModel final : public tovrel::TovrelUserAccountViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The account screens make it.")
    Q_PROPERTY(QVariantList sectionList READ sectionList NOTIFY textsChanged FINAL)

public:
    /// A row.
    struct TOVREL_EXPORT Item {
        std::int64_t index; ///< its place within its section; rows go upwards
        std::string title;

        Item(std::int64_t itemIndex, std::string itemTitle) : index(itemIndex), title(std::move(itemTitle)) {}

        friend bool operator==(const Item&, const Item&) = default;
    };

    /// Rows under a heading.
    class TOVREL_EXPORT Section {
    public:
        enum class Kind { consent, manageAccount };

        [[nodiscard]] static Section consent(std::vector<Item> items);
        [[nodiscard]] static Section manageAccount(std::vector<Item> items);

        [[nodiscard]] Kind kind() const { return kind_; }
        [[nodiscard]] const std::vector<Item>& items() const { return items_; }

        /// The heading, in the language of this moment.
        [[nodiscard]] std::string title() const;

        friend bool operator==(const Section&, const Section&) = default;

    private:
        Section(Kind kind, std::vector<Item> items) : kind_(kind), items_(std::move(items)) {}

        Kind kind_;
        std::vector<Item> items_;
    };

    [[nodiscard]] static std::shared_ptr<TovrelUserAccountManageViewModel>
    make(std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService,
         std::weak_ptr<TovrelUserAccountManageViewObserver> observer = {});
    ~TovrelUserAccountManageViewModel() override;

    [[nodiscard]] const std::shared_ptr<TovrelAccountsWebService>& tovrelAccountsWebService() const {
        return tovrelAccountsWebService_;
    }
    [[nodiscard]] std::shared_ptr<TovrelUserAccountManageViewObserver> observer() const { return observer_.lock(); }

    /// Made with the model, in the language of that moment.
    [[nodiscard]] const std::vector<Section>& sections() const { return sections_; }

    /// The sections in the order of the screen.
    [[nodiscard]] std::vector<Section> sortedSections() const { return sorted(sections_); }
    /// Consent before managing the account; sections of one kind stay as they are.
    [[nodiscard]] static std::vector<Section> sorted(std::vector<Section> sections);
    /// The section's rows in the order of the screen: by index, those of one index as they are.
    [[nodiscard]] static std::vector<Item> sortedItems(const Section& section);

    /// The sorted sections as maps: "kind" ("consent" or "manageAccount"), "title", and "items" with "index" and
    /// "title".
    [[nodiscard]] QVariantList sectionList() const;

    /// Logs out, then tells the observer. From any executor.
    ///
    /// @throws what the accounts service throws; the observer hears nothing then.
    [[nodiscard]] Async<void> onLogoutButtonTap();

    /// Deletes the account, then tells the observer. From any executor.
    ///
    /// @throws what the accounts service throws; the observer hears nothing then.
    [[nodiscard]] Async<void> onDeleteAccountButtonTap();

    /// The user has chosen to log out, or to delete the account: the alert asks whether to. Yes runs the operation
    /// above, with the loading view, an alert if it fails, and the end of the screen if it succeeds.
    Q_INVOKABLE void onLogoutRowTap();
    Q_INVOKABLE void onDeleteAccountRowTap();

private:
    using AccountOperation = Async<void> (TovrelUserAccountManageViewModel::*)();

    TovrelUserAccountManageViewModel(std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService,
                                     std::weak_ptr<TovrelUserAccountManageViewObserver> observer);

    [[nodiscard]] std::shared_ptr<TovrelUserAccountManageViewModel> self();
    /// Starts the operation, for as long as this object is there.
    [[nodiscard]] std::function<void()> onButtonTap(AccountOperation operation);
    static Async<void> logout(std::shared_ptr<TovrelUserAccountManageViewModel> self);
    static Async<void> deleteAccount(std::shared_ptr<TovrelUserAccountManageViewModel> self);
    static Async<void> run(std::shared_ptr<TovrelUserAccountManageViewModel> self, Operation operation);

    std::shared_ptr<TovrelAccountsWebService> tovrelAccountsWebService_;
    std::weak_ptr<TovrelUserAccountManageViewObserver> observer_;
    std::vector<Section> sections_;
};

} // namespace tovrel

/// By both fields.
template <>
struct std::hash<tovrel::TovrelUserAccountManageViewModel::Item> {
    std::size_t operator()(const tovrel::TovrelUserAccountManageViewModel::Item& item) const noexcept {
        return std::hash<std::int64_t>()(item.index) * 31 + std::hash<std::string>()(item.title);
    }
};

/// By kind and rows.
template <>
struct std::hash<tovrel::TovrelUserAccountManageViewModel::Section> {
    std::size_t operator()(const tovrel::TovrelUserAccountManageViewModel::Section& section) const noexcept {
        auto value = static_cast<std::size_t>(section.kind());
        for (const auto& item : section.items()) {
            value = value * 31 + std::hash<tovrel::TovrelUserAccountManageViewModel::Item>()(item);
        }
        return value;
    }
};
