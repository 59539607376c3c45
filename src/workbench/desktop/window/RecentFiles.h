#pragma once
// The traces opened last, newest first, kept in the settings.

#include <QStringList>

#include "workbench/desktop/Settings.h"

namespace kvx::desktop {

class RecentFiles {
  public:
    // The settings must outlive the list.
    explicit RecentFiles(Settings& settings) : settings_(settings) {}

    QStringList List() const;
    void Add(const QString& path);
    void Remove(const QString& path);
    void Clear();

  private:
    Settings& settings_;
};

}  // namespace kvx::desktop
