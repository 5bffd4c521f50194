#include "LooksTest.hpp"

#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/Views/ScreenTextSize.hpp>

#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <stdexcept>

namespace tovrel::tests {

void LooksTest::SetUp() {
    systemFont_ = QGuiApplication::font();
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    QGuiApplication::setFont(font);
    ScreenTest::SetUp();
}

void LooksTest::TearDown() {
    if (!service_->requests.empty()) {
        service_->end(TovrelAppleSignInError::authorizeApple(std::make_exception_ptr(std::runtime_error("ended"))));
    }
    ScreenTest::TearDown();
    QGuiApplication::setFont(systemFont_);
}

void LooksTest::choose(const Look& look) {
    CurrentAppearance::choose(look.appearance);
    ScreenLanguage::choose(look.language);
    ScreenTextSize::choose(look.textScale);
}

void LooksTest::showScreen(AccountScreen screen, QSize size) {
    signInModel_.reset();
    manageModel_.reset();
    if (screen == AccountScreen::manage) {
        showManage(size);
    } else {
        showSignIn(screen == AccountScreen::signIn, size);
    }
    handleEvents();
}

void LooksTest::setAlert(std::optional<TovrelUserAccountAlert> alert) {
    if (manageModel_) {
        manageModel_->setCurrentAlert(std::move(alert));
    } else {
        signInModel_->setCurrentAlert(std::move(alert));
    }
    handleEvents();
}

void LooksTest::startLoading() {
    if (manageModel_) {
        accounts_->hold();
        manageModel_->onLogoutRowTap();
        manageModel_->pressAlertButton(manageModel_->alertId(), 0);
        ASSERT_TRUE(processEventsUntil([&] { return manageModel_->isLoading(); }));
    } else {
        QMetaObject::invokeMethod(&item("signInButton"), "clicked");
        ASSERT_TRUE(signInModel_->isLoading());
    }
    handleEvents();
}

void LooksTest::arrange() {
    handleEvents();
    window().grabWindow();
    handleEvents();
}

QImage LooksTest::grabAtRest() {
    arrange();
    for (QQuickItem* wheel : findAll("wheel")) {
        wheel->setRotation(0);
    }
    return window().grabWindow();
}

} // namespace tovrel::tests
