#include "workbench/desktop/window/RecentFiles.h"

namespace kvx::desktop {
namespace {

constexpr char kName[] = "Window/recent";
constexpr int kKept = 10;

}  // namespace

QStringList RecentFiles::List() const {
    return settings_.Get(kName).toStringList();
}

void RecentFiles::Add(const TraceFiles& files) {
    const QString text = files.Absolute().Text();
    QStringList list = List();
    list.removeAll(text);
    list.prepend(text);
    settings_.Set(kName, list.mid(0, kKept));
}

void RecentFiles::Remove(const QString& text) {
    QStringList list = List();
    list.removeAll(text);
    settings_.Set(kName, list);
}

void RecentFiles::Clear() {
    settings_.Set(kName, QStringList());
}

}  // namespace kvx::desktop
