#include <TovrelWebServices/AccountScreens/Private/AccountText.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/Support/LocalizedString.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QLocale>
#include <QtCore/QString>
#include <string>
#include <vector>

namespace tovrel::tests {

namespace {

class ScreenLanguageTest : public ::testing::Test {
protected:
    void SetUp() override { QLocale::setDefault(QLocale("en_GB")); }

    void TearDown() override {
        ScreenLanguage::choose(std::nullopt);
        QLocale::setDefault(QLocale("en_GB"));
    }

    static void announceLocale(const char* name) {
        QLocale::setDefault(QLocale(name));
        QEvent event(QEvent::LocaleChange);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
    }
};

} // namespace

TEST_F(ScreenLanguageTest, FollowsTheApplicationsLocale) {
    const std::map<std::string, std::string> languages{{"de_AT", "de"}, {"fr_CA", "fr"}, {"es_MX", "es"},
                                                       {"ar_EG", "ar"}, {"en_US", "en"}, {"ja_JP", "en"}};
    for (const auto& [locale, language] : languages) {
        QLocale::setDefault(QLocale(QString::fromStdString(locale)));
        EXPECT_EQ(ScreenLanguage::current(), language) << locale;
    }
}

TEST_F(ScreenLanguageTest, IsTheHostsChoiceWhateverTheLocale) {
    ScreenLanguage::choose("fr");
    QLocale::setDefault(QLocale("de_DE"));
    EXPECT_EQ(ScreenLanguage::current(), "fr");
    ScreenLanguage::choose(std::nullopt);
    EXPECT_EQ(ScreenLanguage::current(), "de");
}

TEST_F(ScreenLanguageTest, OfArabicRunsFromRightToLeft) {
    for (const std::string& language : ScreenLanguage::available()) {
        ScreenLanguage::choose(language);
        EXPECT_EQ(ScreenLanguage::isRightToLeft(), language == "ar") << language;
    }
}

TEST_F(ScreenLanguageTest, SendsEachChangeOnce) {
    std::vector<std::string> seen;
    const Subscription subscription =
        ScreenLanguage::changes().subscribe([&](const std::string& language) { seen.push_back(language); });
    ScreenLanguage::choose("de");
    ScreenLanguage::choose("de");
    announceLocale("fr_FR");
    ScreenLanguage::choose(std::nullopt);
    announceLocale("es_ES");
    EXPECT_EQ(seen, (std::vector<std::string>{"de", "fr", "es"}));
}

TEST(ScreenLanguageDeathTest, StopsTheProcessForALanguageWithoutTexts) {
    EXPECT_DEATH(ScreenLanguage::choose("tlh"), "no texts in the language");
}

TEST_F(ScreenLanguageTest, HasATextForEveryKeyInEveryTable) {
    for (const std::string& language : ScreenLanguage::available()) {
        ScreenLanguage::choose(language);
        for (const AccountTextEntry& entry : accountTexts) {
            EXPECT_NE(localizedString(entry.key, "missing", entry.comment), "missing") << language << " " << entry.key;
        }
    }
}

TEST_F(ScreenLanguageTest, HasTheEnglishTextsOfTheCallSites) {
    for (const AccountTextEntry& entry : accountTexts) {
        EXPECT_EQ(localizedString(entry.key, "missing", entry.comment), entry.defaultValue) << entry.key;
    }
}

TEST_F(ScreenLanguageTest, WritesArabicInArabicLettersAndMarks) {
    ScreenLanguage::choose("ar");
    for (const AccountTextEntry& entry : accountTexts) {
        const QString text = QString::fromStdString(localized(entry.text));
        EXPECT_FALSE(text.contains(QLatin1Char('?')) || text.contains(QLatin1Char(',')) ||
                     text.contains(QLatin1Char(';')))
            << entry.key;
        EXPECT_TRUE(std::any_of(text.begin(), text.end(), [](QChar letter) {
            return letter.script() == QChar::Script_Arabic;
        })) << entry.key;
    }
}

TEST_F(ScreenLanguageTest, LooksATextUpAtEachCall) {
    EXPECT_EQ(localized(AccountText::deleteAlertButtonTitle), "Delete");
    ScreenLanguage::choose("de");
    EXPECT_EQ(localized(AccountText::deleteAlertButtonTitle), "Löschen");
    ScreenLanguage::choose("es");
    EXPECT_EQ(localized(AccountText::deleteAlertButtonTitle), "Eliminar");
}

TEST_F(ScreenLanguageTest, ShowsTheDefaultForAKeyThatIsMissing) {
    ScreenLanguage::choose("de");
    EXPECT_EQ(localizedString("account.user.no.such.key", "In English", "Nothing"), "In English");
    const auto bundle = TovrelWebServicesInstance::bundle();
    EXPECT_FALSE(bundle->localizedString("account.user.error.alert.title", "Elsewhere").has_value());
}

} // namespace tovrel::tests
