#pragma once
// What the Workbench keeps for its user between two runs, as values under "group/key" names.

#include <QSettings>
#include <QVariant>
#include <QVariantMap>
#include <memory>

namespace kvx::desktop {

class Settings {
  public:
    // Kept in memory only: for pictures and tests, which leave no trace in the user's settings.
    Settings() = default;
    // Kept in the text file (INI) at the path, which need not exist yet.
    explicit Settings(const QString& path);

    // The user's file: kvxostrace/kvxostrace.ini below the desktop's folder for settings.
    static QString UserPath();

    // An invalid value when nothing is stored under the name.
    QVariant Get(const QString& name) const;
    void Set(const QString& name, const QVariant& value);

  private:
    std::unique_ptr<QSettings> file_;
    QVariantMap values_;
};

}  // namespace kvx::desktop
