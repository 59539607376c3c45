#include "workbench/desktop/window/HelpBook.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>
#include <algorithm>

namespace kvx::desktop {
namespace {

constexpr char kIndex[] = "index";

// "ostrace"; empty when the key names no book.
QString BookOf(const QString& helpKey) {
    const QString book = helpKey.section(".chm", 0, 0, QString::SectionCaseInsensitiveSeps);
    const bool isName = std::ranges::all_of(book, [](QChar c) { return c.isLetterOrNumber(); });
    return isName ? book.toLower() : QString();
}

}  // namespace

QString HelpBook::Folder() {
    const QDir program(QCoreApplication::applicationDirPath());
    return QDir::cleanPath(program.absoluteFilePath("../share/kvxostrace/help"));
}

QString HelpBook::PagePath(const QString& helpKey) const {
    for (const QString& name : {BookOf(helpKey), QString(kIndex)}) {
        const QString path = folder_ + "/" + name + ".html";
        if (!name.isEmpty() && QFileInfo(path).isFile()) return path;
    }
    return {};
}

bool HelpBook::Open(const QString& helpKey) const {
    const QString path = PagePath(helpKey);
    return !path.isEmpty() && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

}  // namespace kvx::desktop
