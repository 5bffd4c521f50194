#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/Alert.hpp>

#include <functional>
#include <QtCore/QUuid>

namespace tovrel {

/// An alert of the account screens. Each one made has an identity of its own, which copies share. Its texts are in the
/// language of the moment at which it is made. For the main thread only.
struct TOVREL_EXPORT TovrelUserAccountAlert {
    QUuid id;
    Alert alert;

    /// A new identity for this alert.
    explicit TovrelUserAccountAlert(Alert platformAlert);

    /// The connection to the internet is missing.
    [[nodiscard]] static TovrelUserAccountAlert connectionError();
    /// The service has a problem.
    [[nodiscard]] static TovrelUserAccountAlert generalServiceError();
    /// The user could not be signed in.
    [[nodiscard]] static TovrelUserAccountAlert appleSignInError();
    /// Asks whether to log out; `action` is for yes.
    [[nodiscard]] static TovrelUserAccountAlert logout(std::function<void()> action);
    /// Asks whether to delete the account; `action` is for yes.
    [[nodiscard]] static TovrelUserAccountAlert deleteAccount(std::function<void()> action);
};

} // namespace tovrel
