#pragma once
// Light and dark palettes of the program.

#include <QObject>
#include <QPalette>
#include <QString>

namespace kvx::desktop {

enum class Appearance { System, Light, Dark };

QString NameOf(Appearance appearance);         // "system", "light", "dark"
Appearance AppearanceOf(const QString& name);  // System for any other name

// Gives the program its palette, and while it is System follows the desktop's wish for light or
// dark. One object at a time.
class AppearanceSwitch final : public QObject {
    Q_OBJECT
  public:
    explicit AppearanceSwitch(Appearance appearance);

    void Set(Appearance appearance);
    Appearance Get() const { return appearance_; }

  private Q_SLOTS:
    // A setting of the desktop changed.
    void SettingChanged();

  private:
    bool SystemWantsDark() const;
    void Apply();

    Appearance appearance_;
    QPalette systemPalette_;
};

}  // namespace kvx::desktop
