#pragma once

#include <Platform/Events/Subscription.hpp>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtQml/qqmlregistration.h>

namespace tovrel {

/// What every account screen depends on beside its model: appearance, language and size of texts.
class ScreenEnvironment final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark NOTIFY appearanceChanged FINAL)
    Q_PROPERTY(bool isRightToLeft READ isRightToLeft NOTIFY languageChanged FINAL)
    Q_PROPERTY(double textScale READ textScale NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(QColor accentColor READ accentColor NOTIFY appearanceChanged FINAL)
    Q_PROPERTY(QColor destructiveColor READ destructiveColor NOTIFY appearanceChanged FINAL)
    Q_PROPERTY(QFont largeTitleFont READ largeTitleFont NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(QFont headlineFont READ headlineFont NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(QFont bodyFont READ bodyFont NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(QFont footnoteFont READ footnoteFont NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(QString closeText READ closeText NOTIFY languageChanged FINAL)
    Q_PROPERTY(QString loadingText READ loadingText NOTIFY languageChanged FINAL)
    Q_PROPERTY(QString manageTitle READ manageTitle NOTIFY languageChanged FINAL)

public:
    ScreenEnvironment();
    ~ScreenEnvironment() override;

    [[nodiscard]] bool isDark() const;
    [[nodiscard]] bool isRightToLeft() const;
    [[nodiscard]] double textScale() const;
    [[nodiscard]] QColor accentColor() const;
    [[nodiscard]] QColor destructiveColor() const;
    [[nodiscard]] QFont largeTitleFont() const;
    [[nodiscard]] QFont headlineFont() const;
    [[nodiscard]] QFont bodyFont() const;
    [[nodiscard]] QFont footnoteFont() const;
    [[nodiscard]] QString closeText() const;
    [[nodiscard]] QString loadingText() const;
    [[nodiscard]] QString manageTitle() const;

Q_SIGNALS:
    void appearanceChanged();
    void languageChanged();
    void textScaleChanged();

private:
    Subscription appearanceChanges_;
    Subscription languageChanges_;
    Subscription textScaleChanges_;
};

} // namespace tovrel
