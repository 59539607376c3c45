#pragma once
// The traces opened last, newest first, kept in the settings.

#include <QStringList>

#include "workbench/desktop/Settings.h"
#include "workbench/desktop/TraceFiles.h"

namespace kvx::desktop {

class RecentFiles {
  public:
    // The settings must outlive the list.
    explicit RecentFiles(Settings& settings) : settings_(settings) {}

    // Each as TraceFiles tells it as a text.
    QStringList List() const;
    void Add(const TraceFiles& files);
    void Remove(const QString& text);
    void Clear();

  private:
    Settings& settings_;
};

}  // namespace kvx::desktop
