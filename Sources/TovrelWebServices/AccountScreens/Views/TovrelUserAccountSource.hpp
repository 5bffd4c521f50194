#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelWebServices/AccountScreens/TovrelUserAccountViewBuilder.hpp>

#include <memory>
#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace tovrel {

/// A builder and what it builds with, for a host to hand to the `TovrelUserAccount` items of its QML. For the main
/// thread only.
class TOVREL_EXPORT TovrelUserAccountSource final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A host makes it in C++.")

public:
    using LoadingType = TovrelUserAccountViewBuilder::LoadingType;
    using SignInConfig = TovrelUserAccountViewBuilder::SignInConfig;
    using ManageAccountConfig = TovrelUserAccountViewBuilder::ManageAccountConfig;

    /// With every default and no observer.
    explicit TovrelUserAccountSource(TovrelUserAccountViewBuilder viewBuilder, QObject* parent = nullptr);
    ~TovrelUserAccountSource() override;

    TovrelUserAccountViewBuilder builder;
    LoadingType loadingType;
    SignInConfig signInConfig;
    ManageAccountConfig manageAccountConfig;
    std::weak_ptr<TovrelUserAccountViewObserver> observer;
};

} // namespace tovrel
