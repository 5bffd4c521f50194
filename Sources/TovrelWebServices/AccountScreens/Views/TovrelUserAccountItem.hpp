#pragma once

#include <Platform/Concurrency/Async.hpp>
#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/AnyView.hpp>
#include <TovrelWebServices/AccountScreens/Views/TovrelUserAccountSource.hpp>

#include <cstdint>
#include <QtCore/QPointer>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace tovrel {

/// An account screen in a host's QML, where it is called `TovrelUserAccount`. For the main thread only.
///
///     import Tovrel.AccountScreens
///
///     TovrelUserAccount {
///         anchors.fill: parent
///         focus: true
///         source: account // a TovrelUserAccountSource
///         onDismissed: stack.pop()
///     }
class TOVREL_EXPORT TovrelUserAccountItem : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(TovrelUserAccount)
    Q_PROPERTY(tovrel::TovrelUserAccountSource* source READ source WRITE setSource NOTIFY sourceChanged FINAL)
    Q_PROPERTY(Screen screen READ screen WRITE setScreen NOTIFY screenChanged FINAL)

public:
    /// Which of the screens is shown.
    enum class Screen {
        Account,      ///< the combined one, which decides between the other two
        SignIn,       ///< the sign-in screen
        ManageAccount ///< the manage-account screen
    };
    Q_ENUM(Screen)

    explicit TovrelUserAccountItem(QQuickItem* parent = nullptr);
    ~TovrelUserAccountItem() override;

    /// What the screen is built from; nothing is shown without. It is read when the screen is built: when the item is
    /// complete, and when this or `screen` changes.
    [[nodiscard]] TovrelUserAccountSource* source() const { return source_; }
    void setSource(TovrelUserAccountSource* source);

    /// `Account` at first.
    [[nodiscard]] Screen screen() const { return screen_; }
    void setScreen(Screen screen);

    /// Builds the screen anew: after a login or a logout, for instance, when the item stays in its place.
    Q_INVOKABLE void reload();

Q_SIGNALS:
    void sourceChanged();
    void screenChanged();
    /// The screen wants to close. See `AccountScreenItem`.
    void dismissed();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    static Async<void> showSignIn(QPointer<TovrelUserAccountItem> self, std::uint64_t build,
                                  Async<TovrelUserAccountSignInView> building);
    void show(const AnyView& view);

    QPointer<TovrelUserAccountSource> source_;
    Screen screen_ = Screen::Account;
    std::uint64_t build_ = 0; // what is built late for an earlier one is dropped
    QPointer<QQuickItem> content_;
};

} // namespace tovrel
