#include <TovrelWebServices/AccountScreens/AnyView.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

namespace tovrel::tests {

namespace {

class AnyViewTest : public ::testing::Test {
protected:
    std::unique_ptr<QQmlComponent> component(const char* qml) {
        auto made = std::make_unique<QQmlComponent>(&engine_);
        made->setData(qml, QUrl());
        return made;
    }

    QQmlEngine engine_;
    QQuickItem parent_;
};

} // namespace

TEST_F(AnyViewTest, OfNothingMakesNothing) {
    EXPECT_TRUE(AnyView::empty().isEmpty());
    EXPECT_EQ(AnyView::empty().make(engine_, parent_), nullptr);
}

TEST_F(AnyViewTest, MakesTheItemOfAComponentInsideItsParent) {
    const auto text = component("import QtQuick\nItem { implicitWidth: 30; implicitHeight: 20 }");
    const AnyView view = AnyView::fromComponent(*text);
    EXPECT_FALSE(view.isEmpty());
    const QQuickItem* item = view.make(engine_, parent_);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->parentItem(), &parent_);
    EXPECT_EQ(item->parent(), &parent_);
    EXPECT_EQ(item->implicitWidth(), 30);
}

TEST_F(AnyViewTest, MakesANewItemEachTime) {
    const auto plain = component("import QtQuick\nItem {}");
    const AnyView view = AnyView::fromComponent(*plain);
    const AnyView copy = view;
    EXPECT_NE(view.make(engine_, parent_), copy.make(engine_, parent_));
    EXPECT_EQ(parent_.childItems().size(), 2);
}

TEST_F(AnyViewTest, ShowsNothingForAComponentWithErrors) {
    const auto broken = component("import QtQuick\nItem { nonsense }");
    EXPECT_EQ(AnyView::fromComponent(*broken).make(engine_, parent_), nullptr);
}

TEST_F(AnyViewTest, ShowsNothingForAComponentWhoseRootIsNoItem) {
    const auto object = component("import QtQml\nQtObject {}");
    EXPECT_EQ(AnyView::fromComponent(*object).make(engine_, parent_), nullptr);
    EXPECT_TRUE(parent_.childItems().empty());
}

TEST_F(AnyViewTest, ShowsNothingOnceItsComponentHasGone) {
    auto plain = component("import QtQuick\nItem {}");
    const AnyView view = AnyView::fromComponent(*plain);
    plain.reset();
    EXPECT_EQ(view.make(engine_, parent_), nullptr);
}

TEST_F(AnyViewTest, ShowsNothingForAnAddressWithoutAFile) {
    EXPECT_EQ(AnyView::fromUrl(QUrl("qrc:/there/is/none.qml")).make(engine_, parent_), nullptr);
}

TEST_F(AnyViewTest, AdoptsWhatAFactoryMakesWithoutAParent) {
    const AnyView view([](QQmlEngine&, QQuickItem&) { return new QQuickItem(); });
    const QQuickItem* item = view.make(engine_, parent_);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->parent(), &parent_);
    EXPECT_EQ(item->parentItem(), &parent_);
}

TEST_F(AnyViewTest, TakesNullFromAFactory) {
    const AnyView view([](QQmlEngine&, QQuickItem&) -> QQuickItem* { return nullptr; });
    EXPECT_EQ(view.make(engine_, parent_), nullptr);
}

} // namespace tovrel::tests
