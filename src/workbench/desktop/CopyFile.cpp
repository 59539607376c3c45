#include "workbench/desktop/CopyFile.h"

#include <QFile>
#include <QSaveFile>

namespace kvx::desktop {
namespace {

constexpr qint64 kBlock = 1 << 20;

}  // namespace

QString CopyFile(const QString& from, const QString& to) {
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly)) return from + ": " + source.errorString();
    QSaveFile copy(to);
    if (!copy.open(QIODevice::WriteOnly)) return to + ": " + copy.errorString();
    while (!source.atEnd()) {
        const QByteArray block = source.read(kBlock);
        if (source.error() != QFileDevice::NoError) return from + ": " + source.errorString();
        if (copy.write(block) != block.size()) break;
    }
    return copy.commit() ? QString() : to + ": " + copy.errorString();
}

}  // namespace kvx::desktop
