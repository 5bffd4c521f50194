#pragma once

#include <Platform/System/Export.hpp>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tovrel {

/// The items of the window that hosts show to their developers. Libraries add theirs. For the main thread only.
class TOVREL_EXPORT DebugWindowManager {
public:
    /// A line of the debug window and what choosing it does.
    struct Item {
        std::string title;
        std::function<void()> action;

        Item(std::string itemTitle, std::function<void()> itemAction)
            : title(std::move(itemTitle)), action(std::move(itemAction)) {}
    };

    DebugWindowManager() = default;

    void addItem(Item item) { items_.push_back(std::move(item)); }

    /// In the order in which they were added.
    [[nodiscard]] const std::vector<Item>& items() const { return items_; }

    /// Adds nothing: the accounts client has no item to show. Hosts may call it unconditionally.
    void addTovrelAccountsItem();

private:
    std::vector<Item> items_;
};

} // namespace tovrel
