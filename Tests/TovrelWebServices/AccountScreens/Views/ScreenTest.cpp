#include "ScreenTest.hpp"

#include <TovrelWebServices/AccountScreens/CurrentAppearance.hpp>
#include <TovrelWebServices/AccountScreens/ScreenLanguage.hpp>
#include <TovrelWebServices/AccountScreens/Views/ScreenTextSize.hpp>

#include <algorithm>
#include <QtCore/QMutex>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>
#include <utility>

namespace tovrel::tests {

namespace {

QtMessageHandler previousHandler = nullptr;
QMutex warningsMutex;
std::vector<std::string> warnings;

void collectWarnings(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        const QMutexLocker lock(&warningsMutex);
        warnings.push_back(message.toStdString());
    }
    previousHandler(type, context, message);
}

void collect(QQuickItem* item, const QString& name, std::vector<QQuickItem*>& found) {
    if (!item->isVisible()) {
        return;
    }
    if (item->objectName() == name) {
        found.push_back(item);
    }
    for (QQuickItem* child : item->childItems()) {
        collect(child, name, found);
    }
}

} // namespace

ScreenTest::ScreenTest() {
    const QMutexLocker lock(&warningsMutex);
    warnings.clear();
    previousHandler = qInstallMessageHandler(collectWarnings);
}

ScreenTest::~ScreenTest() {
    qInstallMessageHandler(previousHandler);
}

void ScreenTest::SetUp() {
    ScreenLanguage::choose("en");
    CurrentAppearance::choose(UserInterfaceStyle::light);
}

void ScreenTest::TearDown() {
    accounts_->release();
    close();
    ScreensTest::TearDown();
    ScreenLanguage::choose(std::nullopt);
    CurrentAppearance::choose(std::nullopt);
    ScreenTextSize::choose(1);
    signInModel_.reset();
    manageModel_.reset();
    handleEvents();
    const QMutexLocker lock(&warningsMutex);
    EXPECT_EQ(warnings, std::vector<std::string>()) << "Qt has warned";
}

void ScreenTest::show(const AnyView& view, QSize size) {
    controller_ = HostingController::make(view);
    ASSERT_NE(controller_->rootItem(), nullptr);
    window().resize(size);
    window().show();
    window().requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
}

void ScreenTest::showSignIn(bool userHasSignedUp, QSize size) {
    signInModel_ = TovrelUserAccountSignInViewModel::make(accounts_, userHasSignedUp, signInConfig_, observer_);
    show(TovrelUserAccountSignInView(signInModel_).body(), size);
}

void ScreenTest::showManage(QSize size) {
    manageModel_ = TovrelUserAccountManageViewModel::make(accounts_, observer_);
    show(TovrelUserAccountManageView(manageModel_, manageConfig_).body(), size);
}

void ScreenTest::resize(QSize size) {
    window().resize(size);
    ASSERT_TRUE(processEventsUntil([&] { return window().contentItem()->size().toSize() == size; }));
    handleEvents();
}

void ScreenTest::close() {
    controller_.reset();
    handleEvents();
}

QQuickItem* ScreenTest::find(const std::string& name) const {
    const auto all = findAll(name);
    return all.empty() ? nullptr : all.front();
}

QQuickItem& ScreenTest::item(const std::string& name) const {
    QQuickItem* found = find(name);
    if (found == nullptr) {
        throw std::runtime_error("nothing on the screen is called " + name);
    }
    return *found;
}

std::vector<QQuickItem*> ScreenTest::findAll(const std::string& name) const {
    return findAllIn(window(), name);
}

std::vector<QQuickItem*> ScreenTest::findAllIn(const QQuickWindow& window, const std::string& name) {
    std::vector<QQuickItem*> found;
    collect(window.contentItem(), QString::fromStdString(name), found);
    return found;
}

QRectF ScreenTest::rectOf(const QQuickItem& item) {
    return item.mapRectToScene(item.boundingRect());
}

std::string ScreenTest::textOf(const QQuickItem& item) {
    return item.property("text").toString().toStdString();
}

QColor ScreenTest::colorOf(const QQuickItem& item, const char* property) {
    return item.property(property).value<QColor>();
}

std::string ScreenTest::focusedName() const {
    for (const QQuickItem* item = window().activeFocusItem(); item != nullptr; item = item->parentItem()) {
        if (!item->objectName().isEmpty()) {
            return item->objectName().toStdString();
        }
    }
    return "";
}

void ScreenTest::click(QQuickItem& item) {
    click(rectOf(item).center());
}

void ScreenTest::click(QPointF position) {
    QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, position.toPoint());
}

void ScreenTest::touch(QPointF position) {
    static QPointingDevice* const screen = QTest::createTouchDevice();
    QTest::touchEvent(&window(), screen).press(0, position.toPoint());
    QTest::touchEvent(&window(), screen).release(0, position.toPoint());
}

void ScreenTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&window(), key, modifiers);
}

void ScreenTest::handleEvents() {
    for (int round = 0; round < 5; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void ScreenTest::expectWarning(const std::string& words) {
    const QMutexLocker lock(&warningsMutex);
    const bool isThere = std::any_of(warnings.begin(), warnings.end(), [&](const std::string& warning) {
        return warning.find(words) != std::string::npos;
    });
    EXPECT_TRUE(isThere) << words;
    warnings.clear();
}

QImage ScreenTest::grab() {
    handleEvents();
    return window().grabWindow();
}

} // namespace tovrel::tests
