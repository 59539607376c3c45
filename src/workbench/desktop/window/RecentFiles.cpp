#include "workbench/desktop/window/RecentFiles.h"

#include <QFileInfo>

namespace kvx::desktop {
namespace {

constexpr char kName[] = "Window/recent";
constexpr int kKept = 10;

}  // namespace

QStringList RecentFiles::List() const {
    return settings_.Get(kName).toStringList();
}

void RecentFiles::Add(const QString& path) {
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QStringList list = List();
    list.removeAll(absolute);
    list.prepend(absolute);
    settings_.Set(kName, list.mid(0, kKept));
}

void RecentFiles::Remove(const QString& path) {
    QStringList list = List();
    list.removeAll(path);
    settings_.Set(kName, list);
}

void RecentFiles::Clear() {
    settings_.Set(kName, QStringList());
}

}  // namespace kvx::desktop
