#include "workbench/desktop/window/Appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QFile>
#include <QStyle>
#include <QStyleFactory>
#include <memory>

#include "workbench/desktop/window/OutlinedStyle.h"

namespace kvx::desktop {
namespace {

constexpr char kPortal[] = "org.freedesktop.portal.Desktop";
constexpr char kPortalPath[] = "/org/freedesktop/portal/desktop";
constexpr char kPortalSettings[] = "org.freedesktop.portal.Settings";
constexpr int kPortalTimeout = 150;
constexpr unsigned kPreferDark = 1;

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

void SetColours(QPalette& palette, QPalette::ColorRole role, QRgb active, QRgb disabled) {
    palette.setColor(QPalette::Active, role, active);
    palette.setColor(QPalette::Inactive, role, active);
    palette.setColor(QPalette::Disabled, role, disabled);
}

QPalette DarkPalette() {
    QPalette palette;
    SetColours(palette, QPalette::Window, 0xFF2B2D30, 0xFF2B2D30);
    SetColours(palette, QPalette::WindowText, 0xFFE3E4E6, 0xFF7C7F85);
    SetColours(palette, QPalette::Base, 0xFF1E1F22, 0xFF26282B);
    SetColours(palette, QPalette::AlternateBase, 0xFF26282B, 0xFF26282B);
    SetColours(palette, QPalette::ToolTipBase, 0xFF3A3D41, 0xFF3A3D41);
    SetColours(palette, QPalette::ToolTipText, 0xFFE3E4E6, 0xFFE3E4E6);
    SetColours(palette, QPalette::PlaceholderText, 0xFF8A8D93, 0xFF6A6D72);
    SetColours(palette, QPalette::Text, 0xFFE3E4E6, 0xFF7C7F85);
    SetColours(palette, QPalette::Button, 0xFF393B40, 0xFF2F3134);
    SetColours(palette, QPalette::ButtonText, 0xFFE3E4E6, 0xFF7C7F85);
    SetColours(palette, QPalette::BrightText, 0xFFFF6B68, 0xFFFF6B68);
    SetColours(palette, QPalette::Light, 0xFF505358, 0xFF505358);
    SetColours(palette, QPalette::Midlight, 0xFF45484D, 0xFF45484D);
    SetColours(palette, QPalette::Mid, 0xFF232528, 0xFF232528);
    SetColours(palette, QPalette::Dark, 0xFF1A1B1E, 0xFF1A1B1E);
    SetColours(palette, QPalette::Shadow, 0xFF0E0F10, 0xFF0E0F10);
    SetColours(palette, QPalette::Highlight, 0xFF2F65CA, 0xFF44474C);
    SetColours(palette, QPalette::HighlightedText, 0xFFFFFFFF, 0xFFB0B2B6);
    SetColours(palette, QPalette::Link, 0xFF6C9EF8, 0xFF6C9EF8);
    SetColours(palette, QPalette::LinkVisited, 0xFFB48EF7, 0xFFB48EF7);
    return palette;
}

QPalette LightPalette() {
    const std::unique_ptr<QStyle> style(QStyleFactory::create("Fusion"));
    return style->standardPalette();
}

// Asking for a bus where there is none would start one.
bool HasSessionBus() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return true;
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !folder.isEmpty() && QFile::exists(folder + "/bus");
}

}  // namespace

QString NameOf(Appearance appearance) {
    switch (appearance) {
        case Appearance::Light:
            return "light";
        case Appearance::Dark:
            return "dark";
        default:
            return "system";
    }
}

Appearance AppearanceOf(const QString& name) {
    if (name == "light") return Appearance::Light;
    if (name == "dark") return Appearance::Dark;
    return Appearance::System;
}

AppearanceSwitch::AppearanceSwitch(Appearance appearance)
    : appearance_(appearance), systemPalette_(QApplication::palette()) {
    QApplication::setStyle(new OutlinedStyle);
    Apply();
    if (!HasSessionBus()) return;
    QDBusConnection::sessionBus().connect(kPortal, kPortalPath, kPortalSettings, "SettingChanged",
                                          this, SLOT(SettingChanged()));
}

void AppearanceSwitch::Set(Appearance appearance) {
    appearance_ = appearance;
    Apply();
}

void AppearanceSwitch::SettingChanged() {
    if (appearance_ == Appearance::System) Apply();
}

bool AppearanceSwitch::SystemWantsDark() const {
    if (!HasSessionBus()) return false;
    QDBusMessage question =
        QDBusMessage::createMethodCall(kPortal, kPortalPath, kPortalSettings, "Read");
    question << "org.freedesktop.appearance"
             << "color-scheme";
    const QDBusReply<QDBusVariant> answer =
        QDBusConnection::sessionBus().call(question, QDBus::Block, kPortalTimeout);
    if (!answer.isValid()) return false;
    const QVariant outer = answer.value().variant();
    const QVariant inner =
        outer.canConvert<QDBusVariant>() ? outer.value<QDBusVariant>().variant() : outer;
    return inner.toUInt() == kPreferDark;
}

void AppearanceSwitch::Apply() {
    const bool dark =
        appearance_ == Appearance::Dark || (appearance_ == Appearance::System && SystemWantsDark());
    if (dark && !IsDark(systemPalette_)) return QApplication::setPalette(DarkPalette());
    if (appearance_ == Appearance::Light && IsDark(systemPalette_)) {
        return QApplication::setPalette(LightPalette());
    }
    QApplication::setPalette(systemPalette_);
}

}  // namespace kvx::desktop
