#include <TovrelWebServices/Support/LocalizedString.hpp>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace tovrel::tests {

namespace {

class Tables final : public ResourceBundle {
public:
    std::map<std::pair<std::string, std::string>, std::string> texts;

    std::optional<std::string> localizedString(std::string_view key, std::string_view table) const override {
        const auto found = texts.find({std::string(table), std::string(key)});
        return found == texts.end() ? std::nullopt : std::optional(found->second);
    }

    std::optional<std::uint32_t> color(std::string_view name, UserInterfaceStyle style) const override {
        if (name != "border") {
            return std::nullopt;
        }
        return style == UserInterfaceStyle::dark ? 0xFFEEEEEEU : 0xFF222222U;
    }
};

/// Puts a bundle in place for the time of a test.
class LocalizedString : public ::testing::Test {
protected:
    LocalizedString() { TovrelWebServicesInstance::setBundle(tables_); }
    ~LocalizedString() override { TovrelWebServicesInstance::setBundle(previous_); }

    std::shared_ptr<const ResourceBundle> previous_ = TovrelWebServicesInstance::bundle();
    std::shared_ptr<Tables> tables_ = std::make_shared<Tables>();
};

} // namespace

TEST_F(LocalizedString, IsTheTextOfTheTable) {
    tables_->texts[{"Localizable", "account.user.ok"}] = "In Ordnung";
    EXPECT_EQ(localizedString("account.user.ok", "OK", "Closes an alert"), "In Ordnung");
}

TEST_F(LocalizedString, IsTheDefaultTextWithoutAnEntry) {
    EXPECT_EQ(localizedString("account.user.ok", "OK", "Closes an alert"), "OK");
}

TEST_F(LocalizedString, MayBeEmpty) {
    tables_->texts[{"Localizable", "account.user.ok"}] = "";
    EXPECT_EQ(localizedString("account.user.ok", "OK", "Closes an alert"), "");
}

TEST_F(LocalizedString, ComesFromTheNamedTableOfTheGivenBundle) {
    Tables others;
    others.texts[{"Errors", "offline"}] = "Keine Verbindung";
    EXPECT_EQ(localizedString("offline", "Errors", others, "Not connected", ""), "Keine Verbindung");
    EXPECT_EQ(localizedString("offline", "Localizable", others, "Not connected", ""), "Not connected");
}

TEST_F(LocalizedString, IsLookedUpAnewAtEachCall) {
    EXPECT_EQ(localizedString("greeting", "Hello", ""), "Hello");
    tables_->texts[{"Localizable", "greeting"}] = "Bonjour";
    EXPECT_EQ(localizedString("greeting", "Hello", ""), "Bonjour");
    TovrelWebServicesInstance::setBundle(std::make_shared<Tables>());
    EXPECT_EQ(localizedString("greeting", "Hello", ""), "Hello");
}

TEST(TovrelWebServicesInstance, HasABundleWithoutTextsAndColoursAtFirst) {
    const auto bundle = TovrelWebServicesInstance::bundle();
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->localizedString("account.user.ok", "Localizable"), std::nullopt);
    EXPECT_EQ(bundle->color("border", UserInterfaceStyle::light), std::nullopt);
}

TEST_F(LocalizedString, LeavesTheKeptBundleOfTheColoursAlone) {
    std::vector<const ResourceBundle*> found(4);
    std::vector<std::thread> threads;
    for (const ResourceBundle*& bundle : found) {
        threads.emplace_back([&bundle] { bundle = &resourceBundle(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    TovrelWebServicesInstance::setBundle(std::make_shared<Tables>());
    for (const ResourceBundle* bundle : found) {
        EXPECT_EQ(bundle, tables_.get());
    }
    EXPECT_EQ(&resourceBundle(), tables_.get());
    EXPECT_EQ(resourceBundle().color("border", UserInterfaceStyle::dark), 0xFFEEEEEEU);
    EXPECT_EQ(resourceBundle().color("shadow", UserInterfaceStyle::dark), std::nullopt);
}

} // namespace tovrel::tests
