#include "Item.hpp"

std::string described(const Item& item) {
    std::string text = "#" + std::to_string(item.identifier) + " " + item.title;
    if (item.createdAt) {
        text += ", created " + item.createdAt->iso8601().value_or("at an unknown time");
    }
    return text;
}
