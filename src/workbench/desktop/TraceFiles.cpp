#include "workbench/desktop/TraceFiles.h"

#include <QFileInfo>

namespace kvx::desktop {

TraceFiles TraceFiles::FromText(const QString& text) {
    return TraceFiles(text.split('\n', Qt::SkipEmptyParts));
}

TraceFiles TraceFiles::Absolute() const {
    QStringList absolute;
    for (const QString& path : paths_) absolute << QFileInfo(path).absoluteFilePath();
    return TraceFiles(absolute);
}

QString TraceFiles::Text() const {
    return paths_.join('\n');
}

QString TraceFiles::Name() const {
    if (IsEmpty()) return {};
    const QString name = QFileInfo(First()).fileName();
    return paths_.size() == 1 ? name
                              : QStringLiteral("%1 and %2 more").arg(name).arg(paths_.size() - 1);
}

}  // namespace kvx::desktop
